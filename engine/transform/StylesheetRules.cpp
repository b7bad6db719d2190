#include "TransformErrors.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <libxslt/imports.h>

#include <libxml/LibxmlTypes.h>
#include <transform/Stylesheet.h>

namespace tibxml::transform {

using libxml::bytes;
using libxml::view;

namespace {

constexpr std::string_view languageUri = "http://www.w3.org/1999/XSL/Transform";

// In the order of the alphabet.
constexpr std::string_view elementNames[] = {
    "apply-imports",
    "apply-templates",
    "attribute",
    "attribute-set",
    "call-template",
    "choose",
    "comment",
    "copy",
    "copy-of",
    "decimal-format",
    "element",
    "fallback",
    "for-each",
    "if",
    "import",
    "include",
    "key",
    "message",
    "namespace-alias",
    "number",
    "otherwise",
    "output",
    "param",
    "preserve-space",
    "processing-instruction",
    "sort",
    "strip-space",
    "stylesheet",
    "template",
    "text",
    "transform",
    "value-of",
    "variable",
    "when",
    "with-param",
};

bool isOfLanguage(xmlNs const* ns) noexcept {
    return ns != nullptr && view(ns->href) == languageUri;
}

std::string_view valueOf(xmlAttr const& attribute) noexcept {
    return attribute.children != nullptr ? view(attribute.children->content) : std::string_view{};
}

// Whether an element asks for another version of the language than 1.0, for itself and what it
// contains; `around` when it asks for none.
bool isForwardCompatible(xmlNode const& element, bool around) noexcept {
    std::string_view const name = view(element.name);
    bool const isSheet = name == "stylesheet" || name == "transform";
    bool const isInstruction = isOfLanguage(element.ns);
    if (isInstruction && !isSheet) return around;
    for (xmlAttr const* a = element.properties; a != nullptr; a = a->next) {
        bool const isMeant = isInstruction ? a->ns == nullptr : isOfLanguage(a->ns);
        if (isMeant && view(a->name) == "version") return valueOf(*a) != "1.0";
    }
    return around;
}

// The attributes of a declaration, without order.
using Attributes = std::vector<std::pair<std::string_view, std::string_view>>;

Attributes attributesOf(xmlNode const& element) {
    Attributes attributes;
    for (xmlAttr const* a = element.properties; a != nullptr; a = a->next) {
        if (a->ns == nullptr && view(a->name) != "name")
            attributes.emplace_back(view(a->name), valueOf(*a));
    }
    std::sort(attributes.begin(), attributes.end());
    return attributes;
}

class Rules {
public:
    explicit Rules(TransformErrors const& errors) noexcept : errors_{errors} {}

    void check(xmlDoc const* document) {
        xmlNode const* const root = document != nullptr ? xmlDocGetRootElement(document) : nullptr;
        if (root == nullptr) return;
        bool const isForward = isForwardCompatible(*root, false);
        if (!isOfLanguage(root->ns)) return checkInstructions(*root, isForward);
        for (xmlNode const* child = root->children; child != nullptr; child = child->next) {
            // Elements of others are the stylesheet's own data.
            if (child->type != XML_ELEMENT_NODE || !isOfLanguage(child->ns)) continue;
            checkInstructions(*child, isForward);
            if (view(child->name) == "decimal-format") checkFormat(*child);
        }
    }

private:
    void checkInstructions(xmlNode const& element, bool isForwardAround) const {
        bool const isForward = isForwardCompatible(element, isForwardAround);
        std::string_view const name = view(element.name);
        if (isOfLanguage(element.ns) && !isForward &&
            !std::binary_search(std::begin(elementNames), std::end(elementNames), name))
            fail(element, "there is no instruction xsl:" + std::string{name});
        for (xmlNode const* child = element.children; child != nullptr; child = child->next) {
            if (child->type == XML_ELEMENT_NODE) checkInstructions(*child, isForward);
        }
    }

    void checkFormat(xmlNode const& declaration) {
        Format format{nameOf(declaration), attributesOf(declaration)};
        for (Format const& other : formats_) {
            if (other.name == format.name && other.attributes != format.attributes)
                fail(declaration, "another xsl:decimal-format of this name differs");
        }
        formats_.push_back(std::move(format));
    }

    // With the namespace that its prefix stands for.
    static std::string nameOf(xmlNode const& declaration) {
        for (xmlAttr const* a = declaration.properties; a != nullptr; a = a->next) {
            if (a->ns != nullptr || view(a->name) != "name") continue;
            std::string_view const name = valueOf(*a);
            std::size_t const colon = name.find(':');
            if (colon == std::string_view::npos) return std::string{name};
            std::string const prefix{name.substr(0, colon)};
            xmlNs const* const ns =
                xmlSearchNs(declaration.doc, const_cast<xmlNode*>(&declaration), bytes(prefix));
            if (ns == nullptr) return std::string{name};
            return "{" + std::string{view(ns->href)} + "}" + std::string{name.substr(colon + 1)};
        }
        return {};
    }

    [[noreturn]] void fail(xmlNode const& element, std::string const& words) const {
        throw TransformError{errors_.reasonAt(element, words)};
    }

    struct Format {
        std::string name;
        Attributes attributes;
    };

    TransformErrors const& errors_;
    std::vector<Format> formats_;
};

} // namespace

void requireRules(xsltStylesheet* style, TransformErrors const& errors) {
    Rules rules{errors};
    for (; style != nullptr; style = xsltNextImport(style)) {
        rules.check(style->doc);
        for (xsltDocument const* part = style->docList; part != nullptr; part = part->next)
            rules.check(part->doc);
    }
}

} // namespace tibxml::transform
