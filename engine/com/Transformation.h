// Transforming by stylesheets.
#pragma once

#include <TibXml/platform/Variant.h>

#include "NodeHandle.h"

namespace tibxml::com {

// Transforms a document or an element by the stylesheet in another document; the result replaces
// the content of the document in `output`. Throws Failure, TransformError and std::bad_alloc, and
// then has changed nothing.
void transformToObject(NodeHandle& source, NodeHandle& stylesheet, VARIANT const& output);

} // namespace tibxml::com
