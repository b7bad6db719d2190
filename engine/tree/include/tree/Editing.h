// The only place that changes a tree's links and texts. Nothing here checks whether a change makes
// sense (that is the caller's part); everything that can fail does so before it changes anything.
#pragma once

#include <string_view>

#include <tree/Document.h>

namespace tibxml::tree {

// New nodes belong to the document and have no parent. All throw std::bad_alloc.
Node* newElement(Document& document, Name* name);
Node* newAttribute(Document& document, Name* name, std::string_view value);
Node* newCharacterData(Document& document, NodeKind kind, std::string_view text);
Node* newProcessingInstruction(Document& document, Name* target, std::string_view data);

// Puts a node without parent into a parent's list, last or in front of `before`, which is in that
// list: a child among children, an attribute among attributes.
void appendChild(Document& document, Node* parent, Node* child) noexcept;
void appendAttribute(Document& document, Node* element, Node* attribute) noexcept;
void insertBefore(Document& document, Node* parent, Node* node, Node* before) noexcept;

// Takes a node or attribute out of its parent's list. It stays alive; see Lifetime.h for giving it
// back.
void unlink(Document& document, Node* node) noexcept;

// The attribute of an element by its qualified name as written, or by expanded name; null on a
// miss.
Node* findAttribute(Node const* element, std::string_view qualifiedName) noexcept;
Node* findAttribute(Node const* element, Name const* expanded) noexcept;

// Replaces the own characters of a node that is not a parent. Throws std::bad_alloc and
// std::length_error (4 GiB) and then leaves the old text.
void setText(Document& document, Node* node, std::string_view text);

// For readers, which write every text once: like setText on a node without text, without slack.
void setTextOnce(Document& document, Node* node, std::string_view text);

} // namespace tibxml::tree
