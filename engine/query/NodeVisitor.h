// Something that takes nodes one after the other.
#pragma once

#include <memory>
#include <type_traits>

#include <tree/Node.h>

namespace tibxml::query {

// A reference to a callable; it must not outlive it. The callable answers true when it has enough,
// and then no further node comes.
class NodeVisitor {
public:
    template <class Callable,
              class = std::enable_if_t<!std::is_same_v<std::remove_cvref_t<Callable>, NodeVisitor>>>
    NodeVisitor(Callable&& callable) noexcept
        : object_{const_cast<void*>(static_cast<void const*>(std::addressof(callable)))},
          call_{[](void* object, tree::Node* node) -> bool {
              return (*static_cast<std::remove_reference_t<Callable>*>(object))(node);
          }} {}

    bool operator()(tree::Node* node) const { return call_(object_, node); }

private:
    void* object_;
    bool (*call_)(void*, tree::Node*);
};

} // namespace tibxml::query
