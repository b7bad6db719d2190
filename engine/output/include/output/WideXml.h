// The text of a node as the engine's interfaces hand it out.
#pragma once

#include <TibXml/platform/BStr.h>
#include <tree/Document.h>

namespace tibxml::output {

// What writeXml (Serializer.h) gives, as wide characters in a new string that the caller frees;
// null when there is no memory for that string. Throws std::bad_alloc.
BSTR xmlAsBstr(tree::Document const& document, tree::Node const* node);

} // namespace tibxml::output
