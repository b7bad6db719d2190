// Directions in the tree.
#pragma once

#include <cstdint>
#include <vector>

#include <tree/Document.h>
#include <tree/Name.h>
#include <tree/Navigation.h>
#include <tree/Node.h>

namespace tibxml::query {

enum class Axis : std::uint8_t {
    self,
    child,
    attribute,
    descendant,
    descendantOrSelf,
    descendantChild, // of // and a child step whose predicates count: positions among siblings
    parent,
    followingSibling,
    following,
    ancestor, // this and the next go against document order
    ancestorOrSelf,
    precedingSibling,
    preceding,
    namespaces,
};

constexpr bool isReverse(Axis axis) noexcept {
    return axis >= Axis::ancestor && axis <= Axis::preceding;
}

/// What these give lies within no other node and comes before the children of its element.
constexpr bool givesAttributes(Axis axis) noexcept {
    return axis == Axis::attribute || axis == Axis::namespaces;
}

constexpr bool goesDown(Axis axis) noexcept {
    return axis >= Axis::descendant && axis <= Axis::descendantChild;
}

/// The nodes for the namespaces in scope of an element, in the order of the prefixes' bytes; none
/// for other nodes. They stay until NamespaceNodes::sweep. Throws std::bad_alloc.
std::vector<tree::Node*> namespaceNodes(tree::Document& document, tree::Node* element);

namespace axis {

// Each function below gives the nodes of an axis one after the other, in the direction of the axis,
// to a callable that answers true to stop; then it gives true itself.

template <class Take>
bool siblingsFrom(tree::Node* first, Take&& take) {
    for (tree::Node* node = first; node != nullptr; node = node->next)
        if (take(node)) return true;
    return false;
}

template <class Take>
bool attributes(tree::Node* context, Take&& take) {
    for (tree::Node* node = context->firstAttribute(); node != nullptr; node = node->next)
        if (!node->name->declaresNamespace && take(node)) return true;
    return false;
}

template <class Take>
bool descendants(tree::Node* context, Take&& take) {
    for (tree::Node* node = context->firstChild(); node != nullptr;
         node = tree::nextInSubtree(node, context))
        if (take(node)) return true;
    return false;
}

template <class Take>
bool ancestorsFrom(tree::Node* first, Take&& take) {
    for (tree::Node* node = first; node != nullptr; node = node->parent)
        if (take(node)) return true;
    return false;
}

template <class Take>
bool precedingSiblings(tree::Node* context, Take&& take) {
    if (context->is(tree::NodeKind::attribute)) return false;
    for (tree::Node* node = context->previousSibling(); node != nullptr;
         node = node->previousSibling())
        if (take(node)) return true;
    return false;
}

/// After an attribute come the children of its element, and then what follows the element.
inline tree::Node* firstFollowing(tree::Node* context) noexcept {
    if (!context->is(tree::NodeKind::attribute)) return tree::nextAfterSubtree(context, nullptr);
    return context->parent != nullptr ? tree::nextInSubtree(context->parent, nullptr) : nullptr;
}

template <class Take>
bool following(tree::Node* context, Take&& take) {
    for (tree::Node* node = firstFollowing(context); node != nullptr;
         node = tree::nextInSubtree(node, nullptr))
        if (take(node)) return true;
    return false;
}

inline tree::Node* lastInSubtree(tree::Node* node) noexcept {
    while (tree::Node* child = node->lastChild())
        node = child;
    return node;
}

/// Backwards in document order; ancestors are passed over. Before an attribute comes what precedes
/// its element.
template <class Take>
bool preceding(tree::Node* context, Take&& take) {
    tree::Node* node = context->is(tree::NodeKind::attribute) ? context->parent : context;
    if (node == nullptr) return false;
    tree::Node const* ancestor = node->parent;
    while (true) {
        tree::Node* const before = node->previousSibling();
        node = before != nullptr ? lastInSubtree(before) : node->parent;
        if (node == nullptr) return false;
        if (node == ancestor) {
            ancestor = ancestor->parent;
        } else if (take(node)) {
            return true;
        }
    }
}

template <class Take>
bool one(tree::Node* node, Take&& take) {
    return node != nullptr && take(node);
}

template <class Take>
bool namespaces(tree::Document& document, tree::Node* context, Take&& take) {
    for (tree::Node* node : namespaceNodes(document, context))
        if (take(node)) return true;
    return false;
}

} // namespace axis

/// The nodes of any axis but descendantChild, which is not an axis of its own.
template <class Take>
bool walkAxis(Axis direction, tree::Document& document, tree::Node* context, Take&& take) {
    switch (direction) {
    case Axis::self: return take(context);
    case Axis::child: return axis::siblingsFrom(context->firstChild(), take);
    case Axis::attribute: return axis::attributes(context, take);
    case Axis::descendant: return axis::descendants(context, take);
    case Axis::descendantOrSelf: return take(context) || axis::descendants(context, take);
    case Axis::parent: return axis::one(context->parent, take);
    case Axis::followingSibling:
        return !context->is(tree::NodeKind::attribute) && axis::siblingsFrom(context->next, take);
    case Axis::following: return axis::following(context, take);
    case Axis::ancestor: return axis::ancestorsFrom(context->parent, take);
    case Axis::ancestorOrSelf: return axis::ancestorsFrom(context, take);
    case Axis::precedingSibling: return axis::precedingSiblings(context, take);
    case Axis::preceding: return axis::preceding(context, take);
    case Axis::namespaces: return axis::namespaces(document, context, take);
    case Axis::descendantChild: return false;
    }
    return false;
}

} // namespace tibxml::query
