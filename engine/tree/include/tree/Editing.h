// The only place that changes links and texts; DocumentWriter.h sets those of new trees. Whether a
// change makes sense is the caller's part; what can fail does so before it changes anything.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include <tree/Document.h>
#include <tree/Node.h>
#include <tree/Text.h>

namespace tibxml::tree {

// What is done for every node of a large tree is inline; the rest is not worth it.

// Sibling lists: `next` of the last is null, `previous` of the first is the last.
inline void linkLast(Node*& first, Node* parent, Node* node) noexcept {
    node->parent = parent;
    node->next = nullptr;
    if (first == nullptr) {
        node->previous = node;
        first = node;
        return;
    }
    node->previous = first->previous;
    first->previous->next = node;
    first->previous = node;
}

inline std::uint8_t oneLevelMore(std::uint8_t levels) noexcept {
    return levels == 255 ? levels : static_cast<std::uint8_t>(levels + 1);
}

// What Node::levels says of the elements around an element that has come to a parent.
inline void raiseLevels(Node* parent, Node const* child) noexcept {
    if (!child->is(NodeKind::element)) return;
    std::uint8_t levels = oneLevelMore(child->levels);
    for (; parent != nullptr && parent->levels < levels; parent = parent->parent) {
        parent->levels = levels;
        levels = oneLevelMore(levels);
    }
}

// The rest of a subtree whose top has just come into the document's tree, or left it.
void toggleInDocument(Node* top) noexcept;

// A child is in the document's tree when its parent is. What is new has no children yet.
inline void followParent(Node const* parent, Node* child) noexcept {
    if (((parent->flags ^ child->flags) & inDocument) == 0) return;
    child->flags ^= inDocument;
    if (child->firstChild() != nullptr) toggleInDocument(child);
}

// New nodes belong to the document and have no parent. All throw std::bad_alloc.
Node* newElement(Document& document, Name* name);
Node* newAttribute(Document& document, Name* name, std::string_view value);
Node* newCharacterData(Document& document, NodeKind kind, std::string_view text);
Node* newProcessingInstruction(Document& document, Name* target, std::string_view data);

// Gives a subtree without parent and without handles back to the arena.
void destroy(Document& document, Node* subtree) noexcept;

// Puts a node without parent into a parent's list, last: a child among children, an attribute among
// attributes.
inline void appendChild(Document& document, Node* parent, Node* child) noexcept {
    document.touch();
    linkLast(parent->content.links.firstChild, parent, child);
    raiseLevels(parent, child);
    followParent(parent, child);
}

inline void appendAttribute(Document& document, Node* element, Node* attribute) noexcept {
    document.touch();
    linkLast(element->content.links.firstAttribute, element, attribute);
}

// The same in front of `before`, which is in that list, or last when that is null.
void insertBefore(Document& document, Node* parent, Node* node, Node* before) noexcept;

// Takes a node or attribute out of its parent's list. It stays alive; see Lifetimes.h for giving it
// back.
void unlink(Document& document, Node* node) noexcept;

// Takes a node or attribute that is in the document's tree to another place there, in front of
// `before` or last when that is null. What the node holds is not looked at.
void relink(Document& document, Node* node, Node* parent, Node* before) noexcept;

// The attribute of an element by its qualified name as written, or by expanded name; null on a
// miss.
Node* findAttribute(Node const* element, std::string_view qualifiedName) noexcept;
Node* findAttribute(Node const* element, Name const* expanded) noexcept;

// How a text is stored in a node that has room for it, or in a block.
inline void setShortText(Node* node, std::string_view text) noexcept {
    static_assert(Node::inlineCapacity <= 16);
    moveShort(node->content.shortText, text.data(), text.size());
    node->inlineLength = static_cast<std::uint8_t>(text.size());
}

inline void setLongText(Node* node, std::string_view text, Arena::TextBlock block) noexcept {
    std::memcpy(block.data, text.data(), text.size());
    node->content.longText = {block.data, static_cast<std::uint32_t>(text.size()), block.capacity};
    node->inlineLength = Node::outOfLine;
}

// Replaces the own characters of a node that is not a parent. Throws std::bad_alloc and
// std::length_error (4 GiB) and then leaves the old text.
void setText(Document& document, Node* node, std::string_view text);

// For texts that are written once: like setText on a node without text, without slack.
inline void setTextOnce(Document& document, Node* node, std::string_view text) {
    if (text.size() <= Node::inlineCapacity) {
        setShortText(node, text);
    } else {
        setLongText(node, text, document.arena().newExactText(text.size()));
    }
}

// Whether no element lies more than `maximum` deep when a node without this parent above it is put
// below that: the top of a tree is 1 deep, a document does not count. At most 256.
//
// Node::levels bounds for each element how many lie within each other below it. Edits raise it, and
// leave it too high when they take the deepest element away; it is lowered when that matters. So
// asking takes a climb to the top, and a look at those parts of a subtree that were once too deep.
bool fitsBelow(Node const* parent, Node* child, unsigned maximum) noexcept;

} // namespace tibxml::tree
