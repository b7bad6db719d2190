// How many engine objects there are: the measure of leaks.
#pragma once

#include <cstddef>

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

} // namespace tibxml::com
