// Measures of the engine: how many objects there are, for leaks, and how much storage a document
// takes, for growth.
#pragma once

#include <cstddef>

#include <TibXml/platform/IUnknown.h>

namespace tibxml::com {

// Documents, lists and error objects of all threads that are alive now. Objects of nodes are not
// counted by themselves: each keeps its document's object alive.
std::size_t liveObjects() noexcept;

// What every such object has as a member or base.
class LiveObject {
public:
    LiveObject() noexcept;
    LiveObject(LiveObject const&) = delete;
    LiveObject& operator=(LiveObject const&) = delete;
    ~LiveObject();
};

// The bytes that the document of a node or document object has taken from the heap for nodes, names
// and texts. Throws Failure (E_INVALIDARG) for null and for an object of another engine.
std::size_t footprint(IUnknown* object);

} // namespace tibxml::com
