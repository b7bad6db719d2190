#include <tree/Depth.h>

namespace tibxml::tree {

namespace {

unsigned depthOf(Node const* node) noexcept {
    unsigned depth = 0;
    for (; node != nullptr; node = node->parent)
        depth += node->is(NodeKind::element) ? 1 : 0;
    return depth;
}

// The first of these siblings that may have `height` elements within each other.
Node* firstHighEnough(Node* node, unsigned height) noexcept {
    while (node != nullptr && !(node->is(NodeKind::element) && node->levels + 1U >= height))
        node = node->next;
    return node;
}

// Whether a subtree really has `height` elements within each other. Goes only where the levels
// allow it, and lowers those that turn out too high.
bool reaches(Node* top, unsigned height) noexcept {
    Node* node = top;
    while (height > 1) {
        Node* next = firstHighEnough(node->firstChild(), height - 1);
        while (next == nullptr) {
            node->levels = static_cast<std::uint8_t>(height - 2);
            if (node == top) return false;
            next = firstHighEnough(node->next, height++);
            node = node->parent;
        }
        node = next;
        --height;
    }
    return true;
}

} // namespace

bool fitsBelow(Node const* parent, Node* child, unsigned maximum) noexcept {
    if (!child->is(NodeKind::element)) return true;
    unsigned const depth = depthOf(parent);
    if (depth >= maximum) return false;
    unsigned const room = maximum - depth;
    return child->levels < room || !reaches(child, room + 1);
}

} // namespace tibxml::tree
