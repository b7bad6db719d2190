#include "LibxmlDocument.h"

#include <cstddef>
#include <cstring>

#include <libxml/parserInternals.h>
#include <libxml/valid.h>

#include <libxml/LibxmlTypes.h>
#include <tree/AddressCache.h>
#include <tree/Name.h>
#include <tree/Navigation.h>

namespace tibxml::transform {

using libxml::allocated;
using libxml::bytes;
using tree::Node;
using tree::NodeKind;

namespace {

class Copier {
public:
    // From blocks unless that is null.
    Copier(xmlDoc& document, Node const* top, NodeBlocks* blocks) noexcept
        : document_{document},
          // libxml2's documents begin like its nodes.
          parent_{reinterpret_cast<xmlNode*>(&document)},
          top_{top},
          blocks_{blocks},
          namespaces_{document, blocks} {}

    void run() {
        Node const* node = top_->is(NodeKind::document) ? top_->firstChild() : top_;
        while (node != nullptr)
            node = following(copyAt(node));
    }

private:
    // Copies a node, or a run of texts, and returns the last node that it copied. Elements are left
    // open.
    Node const* copyAt(Node const* node) {
        switch (node->kind) {
        case NodeKind::element: openElement(node); return node;
        case NodeKind::text:
        case NodeKind::cdata: return copyTexts(node);
        case NodeKind::comment:
            appendWithContent(XML_COMMENT_NODE, xmlStringComment, node->text());
            return node;
        case NodeKind::processingInstruction:
            appendWithContent(XML_PI_NODE, localName(*node->name), node->text());
            return node;
        default: return node; // the XML declaration is not a node to stylesheets
        }
    }

    Node const* following(Node const* node) noexcept {
        if (node->is(NodeKind::element)) {
            if (Node const* const child = node->firstChild()) return child;
            closeElement();
        }
        while (node != top_ && node->next == nullptr) {
            node = node->parent;
            if (node->is(NodeKind::document)) return nullptr;
            closeElement();
        }
        return node == top_ ? nullptr : node->next;
    }

    void openElement(Node const* element) {
        xmlNode* const copy = append(XML_ELEMENT_NODE, localName(*element->name));
        if (++elements_ < 0xFFFF) copy->line = static_cast<unsigned short>(elements_);
        parent_ = copy;
        namespaces_.open(*copy, element);
        copy->ns = namespaces_.ofElement(*copy, *element->name);
        xmlAttr* last = nullptr;
        for (Node const* a = element->firstAttribute(); a != nullptr; a = a->next) {
            if (!a->name->declaresNamespace) last = addAttribute(*copy, last, a);
        }
    }

    void closeElement() noexcept {
        namespaces_.close();
        parent_ = parent_->parent;
    }

    xmlAttr* addAttribute(xmlNode& element, xmlAttr* last, Node const* attribute) {
        xmlAttr* const copy = static_cast<xmlAttr*>(take(sizeof(xmlAttr)));
        *copy = xmlAttr{};
        copy->type = XML_ATTRIBUTE_NODE;
        copy->doc = &document_;
        copy->parent = &element;
        copy->prev = last;
        (last != nullptr ? last->next : element.properties) = copy;
        copy->name = localName(*attribute->name);
        copy->ns = namespaces_.ofAttribute(element, *attribute->name);
        xmlNode* const text = newNode(XML_TEXT_NODE, xmlStringText);
        text->parent = reinterpret_cast<xmlNode*>(copy);
        copy->children = copy->last = text;
        setText(*text, attribute->text());
        if (attribute->name->qualified == "xml:id")
            xmlAddID(nullptr, &document_, text->content, copy);
        return copy;
    }

    Node const* copyTexts(Node const* first) {
        Node const* last = first;
        while (last->next != nullptr && last->next->isText())
            last = last->next;
        if (first == last) {
            appendText(first->text());
            return last;
        }
        texts_.clear();
        for (Node const* text = first; text != last->next; text = text->next)
            texts_ += text->text();
        appendText(texts_);
        return last;
    }

    void appendText(std::string_view text) {
        if (!text.empty()) setText(*append(XML_TEXT_NODE, xmlStringText), text);
    }

    void appendWithContent(xmlElementType type, xmlChar const* name, std::string_view content) {
        xmlNode* const node = append(type, name);
        node->content = stored(content);
    }

    // libxml2's own reader, too, keeps short texts where an element has its attributes.
    void setText(xmlNode& node, std::string_view text) {
        constexpr std::size_t room = 2 * sizeof(void*);
        static_assert(offsetof(xmlNode, nsDef) + sizeof(void*) ==
                      offsetof(xmlNode, properties) + room);
        if (text.size() >= room) {
            node.content = stored(text);
            return;
        }
        node.content = reinterpret_cast<xmlChar*>(&node.properties);
        if (!text.empty()) std::memcpy(node.content, text.data(), text.size());
        node.content[text.size()] = 0;
    }

    void* take(std::size_t size) {
        return blocks_ != nullptr ? blocks_->take(size) : allocated(xmlMalloc(size));
    }

    xmlChar* stored(std::string_view text) {
        auto* const copy = static_cast<xmlChar*>(take(text.size() + 1));
        if (!text.empty()) std::memcpy(copy, text.data(), text.size());
        copy[text.size()] = 0;
        return copy;
    }

    xmlNode* newNode(xmlElementType type, xmlChar const* name) {
        xmlNode* const node = static_cast<xmlNode*>(take(sizeof(xmlNode)));
        *node = xmlNode{};
        node->type = type;
        node->name = name;
        node->doc = &document_;
        return node;
    }

    xmlNode* append(xmlElementType type, xmlChar const* name) {
        xmlNode* const node = newNode(type, name);
        node->parent = parent_;
        node->prev = parent_->last;
        (parent_->last != nullptr ? parent_->last->next : parent_->children) = node;
        parent_->last = node;
        return node;
    }

    // A prefix whose namespace is not settled yet is part of the name.
    xmlChar const* localName(tree::Name const& name) {
        return names_.of(&name, [&] {
            std::string_view const text = name.uri.empty() ? name.qualified : name.local;
            return allocated(
                xmlDictLookup(document_.dict, bytes(text), static_cast<int>(text.size())));
        });
    }

    xmlDoc& document_;
    xmlNode* parent_;
    Node const* top_;
    NodeBlocks* blocks_;
    LibxmlNamespaces namespaces_;
    std::size_t elements_ = 0;
    std::string texts_; // of a run
    tree::AddressCache<tree::Name const*, xmlChar const*> names_;
};

} // namespace

NodeBlocks::~NodeBlocks() {
    for (xmlNs* const ns : namespaces_)
        xmlFreeNs(ns);
}

void* NodeBlocks::take(std::size_t size) {
    constexpr std::size_t blockSize = std::size_t{1} << 18;
    constexpr std::size_t alignment = alignof(xmlNode);
    std::size_t const whole = (size + alignment - 1) / alignment * alignment;
    if (whole > blockSize / 4) {
        blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(whole));
        return blocks_.back().get();
    }
    if (whole > left_) {
        blocks_.push_back(std::make_unique_for_overwrite<std::byte[]>(blockSize));
        next_ = blocks_.back().get();
        left_ = blockSize;
    }
    void* const taken = next_;
    next_ += whole;
    left_ -= whole;
    return taken;
}

void NodeBlocks::own(xmlNs* ns) {
    try {
        namespaces_.push_back(ns);
    } catch (...) {
        xmlFreeNs(ns);
        throw;
    }
}

namespace {

LibxmlDocument emptyDocument(std::string const& url) {
    LibxmlDocument document{allocated(xmlNewDoc(bytes("1.0")))};
    document->dict = allocated(xmlDictCreate());
    if (!url.empty()) document->URL = allocated(xmlStrdup(bytes(url)));
    return document;
}

} // namespace

LibxmlDocument toLibxml(Node const* source, std::string const& url) {
    LibxmlDocument document = emptyDocument(url);
    Copier{*document, source, nullptr}.run();
    return document;
}

ReadOnlyCopy::ReadOnlyCopy(Node const* source, std::string const& url)
    : document_{emptyDocument(url)} {
    try {
        Copier{*document_, source, &blocks_}.run();
    } catch (...) {
        document_->children = document_->last = nullptr;
        throw;
    }
}

ReadOnlyCopy::~ReadOnlyCopy() {
    document_->children = document_->last = nullptr; // they are not libxml2's to free
}

Node const* elementNumber(tree::Document const& document, std::size_t number) noexcept {
    for (Node const* node = document.node(); node != nullptr;
         node = tree::nextInSubtree(node, document.node())) {
        if (node->is(NodeKind::element) && --number == 0) return node;
    }
    return nullptr;
}

} // namespace tibxml::transform
