// Writes a document from its first node to its last, as readers do: nothing is looked for, and each
// text is stored once.
#pragma once

#include <algorithm>
#include <string_view>

#include <tree/Document.h>
#include <tree/Editing.h>

namespace tibxml::tree {

// A text after which a block of inlineCapacity bytes may be loaded, whatever is there, so that a
// short text is stored without a look at its length.
struct PaddedText {
    std::string_view text;
};

// All functions that make nodes throw std::bad_alloc, and std::length_error for texts above 4 GiB;
// the document is good for being cleared then. Nothing else looks at it or changes it meanwhile.
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
        Node* const element = newNode(NodeKind::element, inDocument, name);
        element->content.links = {nullptr, nullptr};
        link(parent_->content.links.firstChild, last_, element);
        parent_ = element;
        last_ = nullptr;
        lastAttribute_ = nullptr;
        ++depth_;
    }

    // To the element that was opened last, which has no children yet.
    template <class Text>
    void addAttribute(Name* name, Text value) {
        Node* const attribute = newNode(NodeKind::attribute, NodeFlag{}, name, value);
        link(parent_->content.links.firstAttribute, lastAttribute_, attribute);
    }

    // A child that is not an element. Only declarations and processing instructions have a name.
    template <class Text>
    void add(NodeKind kind, Name* name, Text text) {
        link(parent_->content.links.firstChild, last_, newNode(kind, inDocument, name, text));
    }

    void closeElement() noexcept {
        last_ = parent_;
        parent_ = parent_->parent;
        parent_->levels = std::max(parent_->levels, oneLevelMore(last_->levels));
        --depth_;
    }

private:
    template <class Text>
    Node* newNode(NodeKind kind, NodeFlag flags, Name* name, Text text) {
        Node* const node = newNode(kind, flags, name);
        setText(node, text);
        return node;
    }

    // A node without content. Field by field, so that nothing is written twice.
    Node* newNode(NodeKind kind, NodeFlag flags, Name* name) {
        Node* const node = document_.arena().newUnsetNode();
        node->kind = kind;
        node->flags = flags;
        node->inlineLength = 0;
        node->levels = 0;
        node->order = 0;
        node->name = name;
        node->parent = parent_;
        node->next = nullptr;
        node->previous = node;
        node->handle = nullptr;
        return node;
    }

    void setText(Node* node, std::string_view text) { setTextOnce(document_, node, text); }

    void setText(Node* node, PaddedText padded) {
        std::string_view const text = padded.text;
        if (text.size() > Node::inlineCapacity) return setTextOnce(document_, node, text);
        std::memcpy(node->content.shortText, text.data(), Node::inlineCapacity);
        node->inlineLength = static_cast<std::uint8_t>(text.size());
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
