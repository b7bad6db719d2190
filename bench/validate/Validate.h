// Parsing a document and validating it by a schema.
#pragma once

#include <vector>

#include "../load/Load.h"

namespace bench {

// A schema for the settings documents.
std::string const& settingsSchema();

enum class What { parseAndValidate, validate };

ContenderPtr tibxmlValidate(Sources const& sources, What what);
ContenderPtr libxml2Validate(Sources const& sources, What what, Layout layout);

// The sources must outlive what is returned.
std::vector<Operation> validateOperations(Sources const& large);

} // namespace bench
