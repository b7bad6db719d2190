// Walks over long runs of siblings wait for memory, node by node, unless it is asked for early.
#pragma once

#include <cstddef>
#include <cstdint>

#include <tree/Node.h>

namespace tibxml::query {

// Nodes that were read one after the other lie evenly in memory, so the distance to the next
// sibling tells where later ones will be. The processor does not find that out itself, because so
// many other nodes lie between them. A wrong guess costs nothing but the attempt.
class FetchAhead {
public:
    // To be called for each node on the way. The first ones are not worth guessing from.
    void pass(tree::Node const* node) noexcept {
        if (++passed_ < shortRun) return;
        __builtin_prefetch(guess(node, 0));
    }

    // The same when the first attribute is wanted too; it lies behind its element.
    void passWithAttribute(tree::Node const* node) noexcept {
        if (++passed_ < shortRun) return;
        __builtin_prefetch(guess(node, 0));
        __builtin_prefetch(guess(node, sizeof(tree::Node)));
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
