#include "LibxmlDocument.h"

#include <string>
#include <utility>

#include <libxml/LibxmlTypes.h>
#include <reader/Reader.h>
#include <transform/Stylesheet.h>
#include <tree/AddressCache.h>
#include <tree/DocumentWriter.h>
#include <tree/Navigation.h>
#include <tree/Text.h>

namespace tibxml::transform {

using libxml::view;
using tree::NodeKind;

namespace {

class ResultBuilder {
public:
    explicit ResultBuilder(tree::Document& document) noexcept : writer_{document} {}

    void addDeclaration(ResultForm const& form) {
        std::string content = "version=\"1.0\"";
        if (!form.encoding.empty())
            content.append(" encoding=\"").append(form.encoding).append("\"");
        if (form.standalone >= 0)
            content += form.standalone == 1 ? " standalone=\"yes\"" : " standalone=\"no\"";
        writer_.add(NodeKind::declaration, names().intern({}, "xml", {}), content);
    }

    void addChildren(xmlDoc const& result) {
        xmlNode const* node = result.children;
        while (node != nullptr)
            node = following(addAt(*node));
    }

private:
    // Adds a node, or a run of texts, and returns the last one. Elements are left open.
    xmlNode const& addAt(xmlNode const& node) {
        switch (node.type) {
        case XML_ELEMENT_NODE: openElement(node); return node;
        case XML_TEXT_NODE: return addTexts(node);
        case XML_CDATA_SECTION_NODE:
            if (acceptsText(view(node.content)))
                writer_.add(NodeKind::cdata, nullptr, view(node.content));
            return node;
        case XML_COMMENT_NODE:
            writer_.add(NodeKind::comment, nullptr, view(node.content));
            return node;
        case XML_PI_NODE:
            writer_.add(NodeKind::processingInstruction, names().intern({}, view(node.name), {}),
                        view(node.content));
            return node;
        default: return node; // a document type, which our documents do not have
        }
    }

    xmlNode const* following(xmlNode const& added) noexcept {
        xmlNode const* node = &added;
        if (node->type == XML_ELEMENT_NODE) {
            if (node->children != nullptr) return node->children;
            writer_.closeElement();
        }
        while (node->next == nullptr) {
            node = node->parent;
            if (node->type != XML_ELEMENT_NODE) return nullptr; // the document
            writer_.closeElement();
        }
        return node->next;
    }

    void openElement(xmlNode const& source) {
        if (writer_.depth() == 0 && writer_.document().documentElement() != nullptr)
            throw TransformError{"the result has more than one element at its top"};
        if (writer_.depth() == reader::maximumDepth)
            throw TransformError{"the result's elements are nested more than 256 deep"};
        writer_.openElement(nameOf(source.name, source.ns));
        for (xmlNs const* ns = source.nsDef; ns != nullptr; ns = ns->next)
            addDeclaration(*ns);
        for (xmlAttr const* a = source.properties; a != nullptr; a = a->next)
            addAttribute(*a);
    }

    void addDeclaration(xmlNs const& ns) {
        tree::Name* const name =
            ns.prefix == nullptr ? names().intern({}, "xmlns", tree::xmlnsNamespace)
                                 : names().intern("xmlns", view(ns.prefix), tree::xmlnsNamespace);
        writer_.addAttribute(name, view(ns.href));
    }

    void addAttribute(xmlAttr const& source) {
        writer_.addAttribute(nameOf(source.name, source.ns), valueOf(source));
    }

    // Valid until the next call.
    std::string_view valueOf(xmlAttr const& source) {
        xmlNode const* const text = source.children;
        if (text == nullptr) return {};
        if (text->next == nullptr) return view(text->content);
        texts_.clear();
        for (xmlNode const* piece = text; piece != nullptr; piece = piece->next)
            texts_ += view(piece->content);
        return texts_;
    }

    // libxslt keeps texts apart whose output would be escaped differently.
    xmlNode const& addTexts(xmlNode const& first) {
        xmlNode const* last = &first;
        while (last->next != nullptr && last->next->type == XML_TEXT_NODE)
            last = last->next;
        if (last == &first) {
            addText(view(first.content));
            return first;
        }
        texts_.clear();
        for (xmlNode const* text = &first; text != last->next; text = text->next)
            texts_ += view(text->content);
        addText(texts_);
        return *last;
    }

    void addText(std::string_view text) {
        if (!text.empty() && acceptsText(text)) writer_.add(NodeKind::text, nullptr, text);
    }

    // White space beside the root only lays the document out.
    bool acceptsText(std::string_view text) const {
        if (writer_.depth() != 0) return true;
        if (!tree::isBlankText(text))
            throw TransformError{"the result has text outside of an element"};
        return false;
    }

    // While a result lives no address stands for two names.
    tree::Name* nameOf(xmlChar const* local, xmlNs const* ns) {
        return names_.of({local, ns}, [&] {
            bool const hasNamespace = ns != nullptr && ns->href != nullptr && *ns->href != 0;
            return names().intern(hasNamespace ? view(ns->prefix) : "", view(local),
                                  hasNamespace ? view(ns->href) : "");
        });
    }

    tree::NameTable& names() noexcept { return writer_.document().names(); }

    tree::DocumentWriter writer_;
    std::string texts_; // of a run
    tree::AddressCache<std::pair<xmlChar const*, xmlNs const*>, tree::Name*> names_;
};

bool keepsLayout(tree::Node const* element) noexcept {
    for (tree::Node const* a = element->firstAttribute(); a != nullptr; a = a->next) {
        if (a->name->qualified == "xml:space" && a->text() == "preserve") return true;
    }
    for (tree::Node const* child = element->firstChild(); child != nullptr; child = child->next) {
        if (child->isText()) return true;
    }
    return false;
}

// Line breaks everywhere but in and below elements with text of their own.
void indent(tree::Node* root) noexcept {
    for (tree::Node* node = root; node != nullptr;) {
        if (node->firstChild() == nullptr) {
            node = tree::nextInSubtree(node, root);
        } else if (keepsLayout(node)) {
            node = tree::nextAfterSubtree(node, root);
        } else {
            node->flags |= tree::breakInside;
            for (tree::Node* child = node->firstChild(); child != nullptr; child = child->next)
                child->flags |= tree::breakAfter;
            node = node->firstChild();
        }
    }
}

} // namespace

tree::DocumentRef fromLibxml(xmlDoc const& result, ResultForm const& form) {
    auto document = tree::DocumentRef::adopt(tree::Document::create());
    ResultBuilder builder{*document};
    if (form.hasDeclaration) builder.addDeclaration(form);
    builder.addChildren(result);
    if (form.isIndented) {
        if (tree::Node* const root = document->documentElement()) indent(root);
    }
    return document;
}

} // namespace tibxml::transform
