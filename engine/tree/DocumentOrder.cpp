#include <tree/DocumentOrder.h>

#include <tree/Navigation.h>

namespace tibxml::tree {

void ensureOrder(Document& document, Node const* within) noexcept {
    Node const* const root = rootOf(within);
    if (document.orderedRoot == root && document.orderedVersion == document.version()) return;
    std::uint32_t order = 0;
    for (auto* node = const_cast<Node*>(root); node != nullptr; node = nextInSubtree(node, root)) {
        node->order = order++;
        for (Node* a = node->firstAttribute(); a != nullptr; a = a->next)
            a->order = order++;
    }
    document.orderedRoot = root;
    document.orderedVersion = document.version();
}

} // namespace tibxml::tree
