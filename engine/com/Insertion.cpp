#include "Insertion.h"

#include <reader/ReadError.h>
#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/NamespaceNodes.h>
#include <tree/Navigation.h>

#include "DeclarationRules.h"
#include "Failure.h"
#include "NodeHandle.h"

namespace tibxml::com {

namespace {

using tree::NodeKind;

void check(bool isAllowed, char const* refusal) {
    if (!isAllowed) throw Failure{E_FAIL, refusal};
}

// For nodes that do not stand to one another as the call says. No edit knows nodes of the namespace
// axis.
[[noreturn]] void refuse(NodeHandle const& parent, NodeHandle const& child, char const* reason) {
    bool const anyNamespace =
        tree::isNamespaceNode(parent.node()) || tree::isNamespaceNode(child.node());
    throw Failure{anyNamespace ? E_FAIL : E_INVALIDARG, reason};
}

tree::Node const* childOfKind(tree::Node const* parent, NodeKind kind) noexcept {
    tree::Node const* child = parent->firstChild();
    while (child != nullptr && !child->is(kind))
        child = child->next;
    return child;
}

// What can stand beside the root element, and where.
void checkTopLevel(tree::Node const* document, tree::Node const* child, tree::Node const* before) {
    check(!child->isText(), "text cannot stand beside the root element");
    if (child->is(NodeKind::element)) {
        tree::Node const* const root = childOfKind(document, NodeKind::element);
        check(root == nullptr || root == child, "a document has one root element");
    }
    if (child->is(NodeKind::declaration)) {
        tree::Node const* const declaration = childOfKind(document, NodeKind::declaration);
        check(declaration == nullptr && before == document->firstChild(),
              "the XML declaration comes first and once");
    }
    check(before == nullptr || !before->is(NodeKind::declaration),
          "nothing can stand before the XML declaration");
}

// Most nodes that are put somewhere have no children: then there is no climb to the top.
bool isWithin(tree::Node const* node, tree::Node const* ancestor) noexcept {
    return ancestor->firstChild() == nullptr ? node == ancestor : tree::isInSubtree(node, ancestor);
}

void checkPlace(tree::Node const* parent, tree::Node* child, tree::Node const* before) {
    check(parent->hasChildList(), "the node cannot have children");
    check(!child->is(NodeKind::attribute) && !child->is(NodeKind::document),
          "attributes and documents cannot be children");
    check(!isWithin(parent, child), "a node cannot be put into itself");
    check(tree::fitsBelow(parent, child, reader::maximumDepth),
          "elements would be nested deeper than in a document that loads");
    if (parent->is(NodeKind::document)) {
        checkTopLevel(parent, child, before);
    } else {
        check(!child->is(NodeKind::declaration), "the XML declaration belongs to a document");
    }
}

// The name that a child will have below a parent, as a record of the parent's document. Its own
// declarations and attributes come first.
tree::Name* nameBelow(NodeHandle& parent, NodeHandle const& child) {
    tree::Name const* const name = child.node()->name;
    if (name == nullptr) return nullptr;
    bool const declaresItself =
        isUnresolved(*name) && meaningOn(child.node(), name->prefix).has_value();
    return nameAt(parent.storage(), declaresItself ? child.node() : parent.node(), child);
}

// The checks are done: the rest changes the tree. Another node may be replaced.
void place(NodeHandle& parent, NodeHandle& child, tree::Name* name, tree::Node* before,
           tree::Node* old = nullptr) {
    tree::Removal replaced{parent.storage(), old};
    adopt(parent.owner(), parent.storage(), child);
    parent.storage().lifetimes().move(child.node(), parent.node(), before);
    child.node()->name = name;
    replaced.run();
}

} // namespace

void insertChild(NodeHandle& parent, NodeHandle& child, NodeHandle const* before) {
    tree::Node* const reference = before != nullptr ? before->node() : nullptr;
    if (reference != nullptr &&
        (reference->parent != parent.node() || reference->is(NodeKind::attribute)))
        refuse(parent, *before, "the reference is not a child of the node");
    if (reference == child.node()) return;
    checkPlace(parent.node(), child.node(), reference);
    place(parent, child, nameBelow(parent, child), reference);
}

void removeChild(NodeHandle& parent, NodeHandle& child) {
    tree::Node* const node = child.node();
    if (node->parent != parent.node() || node->is(NodeKind::attribute))
        refuse(parent, child, "the node is not a child of this one");
    parent.storage().lifetimes().remove(node);
}

void setRoot(NodeHandle& document, NodeHandle& element) {
    check(element.node()->is(NodeKind::element), "only an element can be the root");
    tree::Node* const old = document.storage().documentElement();
    if (old == element.node()) return;
    place(document, element, nameBelow(document, element), old, old);
}

ComPtr<NodeHandle> referenceIn(VARIANT const& value) {
    switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_ERROR: return {};
    case VT_UNKNOWN:
    case VT_DISPATCH:
        return value.punkVal != nullptr ? handleOf(value.punkVal) : ComPtr<NodeHandle>{};
    default: throw Failure{E_INVALIDARG, "a node is expected as reference"};
    }
}

} // namespace tibxml::com
