// Writes a document from its first node to its last, as readers do: nothing is looked for, and each
// text is stored once.
#pragma once

#include <algorithm>
#include <string_view>

#include <tree/Document.h>
#include <tree/Editing.h>

namespace tibxml::tree {

// All functions that make nodes throw std::bad_alloc, and std::length_error for texts above 4 GiB;
// the document is good for being cleared then. Nobody else looks at it or changes it meanwhile.
class DocumentWriter {
public:
    // The document must be empty.
    explicit DocumentWriter(Document& document) noexcept
        : document_{document},
          parent_{document.node()} {
        document.touch();
    }

    Document& document() const noexcept { return document_; }

    // The innermost open element, or the document node.
    Node* parent() const noexcept { return parent_; }

    // What the next child comes after; null for the first child.
    Node* last() const noexcept { return last_; }

    // How many elements are open.
    int depth() const noexcept { return depth_; }

    void openElement(Name* name) {
        Node* const element = document_.arena().newNode(NodeKind::element);
        element->name = name;
        append(element);
        parent_ = element;
        last_ = nullptr;
        lastAttribute_ = nullptr;
        ++depth_;
    }

    // To the element that was opened last, which has no children yet.
    void addAttribute(Name* name, std::string_view value) {
        Node* const attribute = newNode(NodeKind::attribute, name, value);
        attribute->parent = parent_;
        link(parent_->content.links.firstAttribute, lastAttribute_, attribute);
    }

    // A child that is no element. Only declarations and processing instructions have a name.
    void add(NodeKind kind, Name* name, std::string_view text) {
        append(newNode(kind, name, text));
    }

    void closeElement() noexcept {
        last_ = parent_;
        parent_ = parent_->parent;
        parent_->levels = std::max(parent_->levels, oneLevelMore(last_->levels));
        --depth_;
    }

private:
    Node* newNode(NodeKind kind, Name* name, std::string_view text) {
        Node* const node = document_.arena().newNode(kind);
        node->name = name;
        setTextOnce(document_, node, text);
        return node;
    }

    void append(Node* node) noexcept {
        node->parent = parent_;
        node->flags = inDocument;
        link(parent_->content.links.firstChild, last_, node);
    }

    static void link(Node*& first, Node*& last, Node* node) noexcept {
        if (last == nullptr) {
            first = node;
        } else {
            node->previous = last;
            last->next = node;
            first->previous = node;
        }
        last = node;
    }

    Document& document_;
    Node* parent_;
    Node* last_ = nullptr;
    Node* lastAttribute_ = nullptr;
    int depth_ = 0;
};

} // namespace tibxml::tree
