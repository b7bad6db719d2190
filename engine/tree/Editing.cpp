#include <tree/Editing.h>

#include <cstring>

#include <tree/NamespaceNodes.h>
#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

void linkBefore(Node*& first, Node* parent, Node* node, Node* before) noexcept {
    node->parent = parent;
    node->next = before;
    node->previous = before->previous;
    if (first == before) {
        first = node;
    } else {
        before->previous->next = node;
    }
    before->previous = node;
}

void unlinkFrom(Node*& first, Node* node) noexcept {
    Node* const following = node->next;
    Node* const last = first->previous;
    if (node != first) node->previous->next = following;
    if (following != nullptr) {
        following->previous = node->previous;
    } else {
        first->previous = node->previous;
    }
    if (node == first) first = node == last ? nullptr : following;
    node->parent = nullptr;
    node->next = nullptr;
    node->previous = node;
}

// The list of a parent in which a node has its place.
Node*& listFor(Node* parent, Node const* node) noexcept {
    Node::Links& links = parent->content.links;
    return node->is(NodeKind::attribute) ? links.firstAttribute : links.firstChild;
}

void putInto(Node* parent, Node* node, Node* before) noexcept {
    Node*& first = listFor(parent, node);
    if (before != nullptr) {
        linkBefore(first, parent, node, before);
    } else {
        linkLast(first, parent, node);
    }
    raiseLevels(parent, node);
}

// The text of a node that is not a parent.
void freeText(Document& document, Node const& node) noexcept {
    if (node.inlineLength != Node::outOfLine) return;
    document.arena().freeText({node.content.longText.data, node.content.longText.capacity});
}

void freeOne(Document& document, Node* node) noexcept {
    if (!node->hasChildList()) freeText(document, *node);
    document.arena().freeNode(node);
}

void freeAttributes(Document& document, Node* element) noexcept {
    for (Node* a = element->firstAttribute(); a != nullptr;) {
        Node* const following = a->next;
        freeOne(document, a);
        a = following;
    }
}

Node* deepestFirst(Node* node) noexcept {
    while (Node* child = node->firstChild())
        node = child;
    return node;
}

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

Node* newElement(Document& document, Name* name) {
    Node* const node = document.arena().newNode(NodeKind::element);
    node->name = name;
    return node;
}

Node* newCharacterData(Document& document, NodeKind kind, std::string_view text) {
    Node* const node = document.arena().newNode(kind);
    try {
        setText(document, node, text);
    } catch (...) {
        document.arena().freeNode(node);
        throw;
    }
    return node;
}

Node* newAttribute(Document& document, Name* name, std::string_view value) {
    Node* const node = newCharacterData(document, NodeKind::attribute, value);
    node->name = name;
    return node;
}

Node* newProcessingInstruction(Document& document, Name* target, std::string_view data) {
    Node* const node = newCharacterData(document, NodeKind::processingInstruction, data);
    node->name = target;
    return node;
}

void destroy(Document& document, Node* subtree) noexcept {
    // What was noted about its children must not be taken for that of a new element in its place.
    if (subtree->firstChild() != nullptr) document.touch();
    NamespaceNodes::forget(document, subtree);
    // Children before parents: every node is left through its next sibling or its parent, which
    // are read before the node goes.
    Node* node = deepestFirst(subtree);
    while (node != subtree) {
        Node* const following = node->next != nullptr ? deepestFirst(node->next) : node->parent;
        freeAttributes(document, node);
        freeOne(document, node);
        node = following;
    }
    freeAttributes(document, subtree);
    freeOne(document, subtree);
}

void insertBefore(Document& document, Node* parent, Node* node, Node* before) noexcept {
    document.touch();
    putInto(parent, node, before);
    if (!node->is(NodeKind::attribute)) followParent(parent, node);
}

void unlink(Document& document, Node* node) noexcept {
    document.touch();
    unlinkFrom(listFor(node->parent, node), node);
    if ((node->flags & inDocument) == 0) return;
    node->flags ^= inDocument;
    toggleInDocument(node);
}

void relink(Document& document, Node* node, Node* parent, Node* before) noexcept {
    document.touch();
    unlinkFrom(listFor(node->parent, node), node);
    putInto(parent, node, before);
}

void toggleInDocument(Node* top) noexcept {
    for (Node* node = nextInSubtree(top, top); node != nullptr; node = nextInSubtree(node, top))
        node->flags ^= inDocument;
}

Node* findAttribute(Node const* element, std::string_view qualifiedName) noexcept {
    Node* attribute = element->firstAttribute();
    while (attribute != nullptr && attribute->name->qualified != qualifiedName)
        attribute = attribute->next;
    return attribute;
}

Node* findAttribute(Node const* element, Name const* expanded) noexcept {
    Node* attribute = element->firstAttribute();
    while (attribute != nullptr && attribute->name->expanded != expanded)
        attribute = attribute->next;
    return attribute;
}

void setText(Document& document, Node* node, std::string_view text) {
    Node const old = *node; // the new text may be part of the old one: free that last
    if (text.size() <= Node::inlineCapacity) {
        setShortText(node, text);
    } else {
        setLongText(node, text, document.arena().newRecyclableText(text.size()));
    }
    freeText(document, old);
    document.touch();
}

bool fitsBelow(Node const* parent, Node* child, unsigned maximum) noexcept {
    if (!child->is(NodeKind::element)) return true;
    unsigned const depth = depthOf(parent);
    if (depth >= maximum) return false;
    unsigned const room = maximum - depth;
    return child->levels < room || !reaches(child, room + 1);
}

} // namespace tibxml::tree
