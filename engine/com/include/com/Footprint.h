// How much storage a document takes: the measure of growth.
#pragma once

#include <cstddef>

#include <TibXml/platform/IUnknown.h>

namespace tibxml::com {

// The bytes that the document of a node or document object has taken from the heap for nodes, names
// and texts. Throws Failure (E_INVALIDARG) for null and for an object of another engine.
std::size_t footprint(IUnknown* object);

} // namespace tibxml::com
