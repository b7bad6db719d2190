// Asks for memory before a walk over a long run of siblings and their attributes comes to it.
#pragma once

#include <cstddef>
#include <cstdint>

#include <tree/Node.h>

namespace tibxml::query {

// Nodes that were read one after the other lie evenly in memory, so the distance to the next
// sibling tells where later ones will be. Worth about a quarter of the time where each attribute is
// looked at; walks that look at the siblings alone gain nothing measurable and do without.
class FetchAhead {
public:
    // To be called for each node on the way. The first ones are not worth guessing from.
    void pass(tree::Node const* node) noexcept {
        if (++passed_ < shortRun) return;
        __builtin_prefetch(guess(node, 0));
        __builtin_prefetch(guess(node, sizeof(tree::Node))); // the first attribute
    }

private:
    static constexpr std::size_t shortRun = 16;
    static constexpr std::uintptr_t distance = 12;

    // Not a pointer to anything; only its address is used.
    static void const* guess(tree::Node const* node, std::uintptr_t offset) noexcept {
        auto const here = reinterpret_cast<std::uintptr_t>(node);
        auto const next = reinterpret_cast<std::uintptr_t>(node->next);
        std::uintptr_t const there = here + distance * (next - here) + offset;
        return reinterpret_cast<void const*>(there); // NOLINT(performance-no-int-to-ptr)
    }

    std::size_t passed_ = 0;
};

} // namespace tibxml::query
