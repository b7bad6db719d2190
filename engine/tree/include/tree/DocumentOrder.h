// Document order: element, its attributes, its children.
#pragma once

#include <tree/Document.h>

namespace tibxml::tree {

// Gives every node of the tree that holds `within` a number in Node::order that grows in document
// order, unless the numbers are still valid. O(size of the tree) when they are not.
void ensureOrder(Document& document, Node const* within) noexcept;

// Both nodes must lie in the tree that ensureOrder was last called for.
inline bool comesBefore(Node const* a, Node const* b) noexcept {
    return a->order < b->order;
}

} // namespace tibxml::tree
