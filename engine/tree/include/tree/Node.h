// One node of a document: 64 bytes, one cache line, whatever its kind.
//
// Nodes know their names, neighbours and text and nothing else: no engine interfaces, no parser.
// All links are plain pointers into the arena of the owning Document; Editing.h is the only place
// that changes them, once DocumentWriter.h has set them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tibxml::tree {

struct Name;

enum class NodeKind : std::uint8_t {
    element,
    attribute,
    text,
    cdata,
    processingInstruction,
    comment,
    document,
    declaration, // the XML declaration: a child of the document that queries do not see
};

enum NodeFlag : std::uint8_t {
    // Where the reader dropped white space that only lays the document out, so that the serialiser
    // can lay it out again.
    breakAfter = 1,  // a dropped run followed this node
    breakInside = 2, // a dropped run was the first thing in this element

    awaitsDisposal = 4, // see Lifetimes.h

    // On everything below the document node and on that itself, attributes left out, so that it
    // takes no climb to the top to learn whether a node is attached; see isInDocument().
    inDocument = 8,

    namespaceNode = 16, // see NamespaceNodes.h
};

struct Node {
    // Text up to this many bytes lives in the node itself.
    static constexpr std::size_t inlineCapacity = 16;
    static constexpr std::uint8_t outOfLine = 0xFF;

    struct Links {
        Node* firstChild;
        Node* firstAttribute;
    };

    struct LongText {
        char* data;
        std::uint32_t length;
        std::uint32_t capacity; // of the block that data points to
    };

    union Content {
        Links links;                    // element, document
        LongText longText;              // the others, when inlineLength == outOfLine
        char shortText[inlineCapacity]; // the others, when inlineLength <= inlineCapacity
    };

    NodeKind kind;
    std::uint8_t flags;        // of NodeFlag
    std::uint8_t inlineLength; // see Content
    std::uint8_t levels;       // of elements below an element, at most; see fitsBelow()
    std::uint32_t order;       // position in document order, valid as Document::ensureOrder() says
    Name* name;                // element, attribute, processing instruction (its target); else null
    Node* parent;   // of an attribute: its element; null when detached and for the document
    Node* next;     // null for the last sibling
    Node* previous; // the first sibling's previous is the last one; a lone node's is itself
    void* handle;   // the live engine object for this node, or null; owned elsewhere
    Content content;

    bool is(NodeKind k) const noexcept { return kind == k; }

    bool isText() const noexcept { return kind == NodeKind::text || kind == NodeKind::cdata; }

    bool hasChildList() const noexcept {
        return kind == NodeKind::element || kind == NodeKind::document;
    }

    // Own characters of a node that is not a parent: text, CDATA, comment, attribute value,
    // processing instruction data, declaration content. UTF-8. Empty for elements and documents.
    std::string_view text() const noexcept {
        if (hasChildList()) return {};
        if (inlineLength == outOfLine) return {content.longText.data, content.longText.length};
        return {content.shortText, inlineLength};
    }

    // The navigation below is valid for every kind; a node without such a neighbour gives null.
    Node* firstChild() const noexcept {
        return hasChildList() ? content.links.firstChild : nullptr;
    }

    Node* lastChild() const noexcept {
        Node* first = firstChild();
        return first != nullptr ? first->previous : nullptr;
    }

    Node* firstAttribute() const noexcept {
        return kind == NodeKind::element ? content.links.firstAttribute : nullptr;
    }

    Node* previousSibling() const noexcept {
        return previous->next != nullptr ? previous : nullptr;
    }
};

static_assert(sizeof(void*) != 8 || sizeof(Node) == 64, "a node fills one cache line");

} // namespace tibxml::tree
