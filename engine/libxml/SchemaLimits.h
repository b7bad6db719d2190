// What the schema processor cannot be given.
#pragma once

#include "SchemaDocuments.h"

namespace tibxml::validation {

// The processor follows references between definitions by calling itself, and writes the content
// of groups out wherever they are referred to. A schema of a few kilobytes can thus exhaust stack
// and memory. Throws SchemaError for one that goes beyond these limits, std::bad_alloc.
void checkLimits(SchemaDocuments const& documents);

} // namespace tibxml::validation
