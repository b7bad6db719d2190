// Trees made by hand, and whether their links hold together.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

#include <tree/Document.h>
#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/Navigation.h>

namespace tibxml::tree::test {

class Tree : public testing::Test {
protected:
    Document& document() const { return *document_; }

    Node* top() const { return document_->node(); }

    Name* name(std::string_view local, std::string_view prefix = {}, std::string_view uri = {}) {
        return document().names().intern(prefix, local, uri);
    }

    // With a null parent the node stays detached.
    Node* element(Node* parent, std::string_view local) {
        Node* const node = newElement(document(), name(local));
        if (parent != nullptr) appendChild(document(), parent, node);
        return node;
    }

    Node* text(Node* parent, std::string_view content, NodeKind kind = NodeKind::text) {
        Node* const node = newCharacterData(document(), kind, content);
        if (parent != nullptr) appendChild(document(), parent, node);
        return node;
    }

    Node* attribute(Node* parent, Name* attributeName, std::string_view value) {
        Node* const node = newAttribute(document(), attributeName, value);
        if (parent != nullptr) appendAttribute(document(), parent, node);
        return node;
    }

    Node* declaration(Node* parent, std::string_view prefix, std::string_view uri) {
        Name* const full = prefix.empty() ? name("xmlns", {}, xmlnsNamespace)
                                          : name(prefix, "xmlns", xmlnsNamespace);
        return attribute(parent, full, uri);
    }

    // What engine objects do when they start and stop referring to a node.
    void hold(Node* node) {
        document().lifetimes().handleAttached(node);
        node->handle = &document_;
    }

    void letGo(Node* node) {
        node->handle = nullptr;
        document().lifetimes().handleReleased(node);
    }

private:
    DocumentRef document_ = DocumentRef::adopt(Document::create());
};

// The sibling list of a parent, with the faults of its links if there are any.
inline std::string listOf(Node const* parent, Node const* first) {
    std::string names;
    Node const* last = nullptr;
    for (Node const* n = first; n != nullptr; n = n->next) {
        names += n->name->local;
        if (n->parent != parent) names += "(parent)";
        if (n != first && n->previous != last) names += "(previous)";
        if (n->previousSibling() != last) names += "(previousSibling)";
        last = n;
    }
    if (first != nullptr && first->previous != last) names += "(last)";
    return names;
}

inline std::string childrenOf(Node const* parent) {
    return listOf(parent, parent->firstChild());
}

inline std::string attributesOf(Node const* element) {
    return listOf(element, element->firstAttribute());
}

} // namespace tibxml::tree::test
