// The text of a node as the engine's interfaces hand it out.
#pragma once

#include <TibXml/platform/BStr.h>
#include <tree/Document.h>

namespace tibxml::output {

// What writeXml (Serializer.h) gives, as wide characters in a new string that the caller frees;
// null when there is no memory for that string. Throws std::bad_alloc.
//
// A large text is written twice, first to measure it: that is quicker than touching the memory for
// an intermediate text, let alone for one that grows.
BSTR xmlAsBstr(tree::Document const& document, tree::Node const* node);

} // namespace tibxml::output
