// The nodes of the namespace axis. They are in no list of the tree: each is made when a query comes
// to it and goes when nothing refers to it any more.
//
// Such a node looks like the attribute that declares its prefix, with its element as parent, and
// never changes: for an element, a prefix and a namespace there is one node while anything refers
// to it. A handle on it keeps its element like one on an attribute.
#pragma once

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <tree/Document.h>

namespace tibxml::tree {

inline bool isNamespaceNode(Node const* node) noexcept {
    return (node->flags & namespaceNode) != 0;
}

class NamespaceNodes {
public:
    // The node that says what a prefix (empty: the default) stands for at an element, made when
    // missing. Throws std::bad_alloc.
    static Node* get(Document& document, Node* element, std::string_view prefix,
                     std::string_view uri);

    // Those that an element has now, linked by Node::next; null for none.
    static Node* firstOf(Document const& document, Node const* element) noexcept;

    // Gives back what has no handle, unless the document is pinned; `kept` stays.
    static void sweep(Document& document, Node const* kept = nullptr) noexcept {
        if (document.hasNamespaceNodes() && !document.lifetimes().isPinned())
            document.namespaceNodes_->sweepLoose(document, kept);
    }

    // To be called for a node whose handle is gone.
    static void release(Document& document, Node* node) noexcept;

    // To be called for a subtree that goes. Its elements' namespace nodes have no handles.
    static void forget(Document& document, Node* subtree) noexcept {
        if (document.hasNamespaceNodes()) document.namespaceNodes_->forgetBelow(document, subtree);
    }

    // Handles on the namespace nodes of a subtree's elements.
    static std::size_t countHandles(Document const& document, Node const* subtree) noexcept;

private:
    Node* find(Node const* element, Name const* name, std::string_view uri) const noexcept;
    Node* add(Document& document, Node* element, Name* name, std::string_view uri);
    void forgetBelow(Document& document, Node* subtree) noexcept;
    void becomeLoose(Node* node);
    void sweepLoose(Document& document, Node const* kept) noexcept;
    void drop(Document& document, Node* node) noexcept;

    std::unordered_map<Node const*, Node*> firsts_; // by element
    std::vector<Node*> loose_; // what a sweep looks at; without parent when the element is gone
};

} // namespace tibxml::tree
