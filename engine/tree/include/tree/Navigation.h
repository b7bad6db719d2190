// Walking a tree without recursion.
#pragma once

#include <tree/Node.h>

namespace tibxml::tree {

// The node after this whole subtree in document order, within the subtree of root; null at the end.
inline Node* nextAfterSubtree(Node const* node, Node const* root) noexcept {
    while (node != root) {
        if (node->next != nullptr) return node->next;
        node = node->parent;
    }
    return nullptr;
}

// The next node in document order within the subtree of root, attributes left out; null at the end.
inline Node* nextInSubtree(Node const* node, Node const* root) noexcept {
    if (Node* child = node->firstChild()) return child;
    return nextAfterSubtree(node, root);
}

// Whether the node belongs to its document's tree and not to a detached subtree.
inline bool isInDocument(Node const* node) noexcept {
    Node const* const bearer = node->is(NodeKind::attribute) ? node->parent : node;
    return bearer != nullptr && (bearer->flags & inDocument) != 0;
}

// The top of the tree that holds the node: a document node or the root of a detached subtree.
inline Node* rootOf(Node* node) noexcept {
    while (node->parent != nullptr)
        node = node->parent;
    return node;
}

inline Node const* rootOf(Node const* node) noexcept {
    while (node->parent != nullptr)
        node = node->parent;
    return node;
}

// True for a node in the subtree of ancestor, ancestor itself and attributes included.
inline bool isInSubtree(Node const* node, Node const* ancestor) noexcept {
    while (node != nullptr && node != ancestor)
        node = node->parent;
    return node != nullptr;
}

} // namespace tibxml::tree
