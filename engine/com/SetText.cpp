#include "SetText.h"

#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/NamespaceNodes.h>

#include "DeclarationRules.h"
#include "Failure.h"
#include "TypedValue.h"

namespace tibxml::com {

namespace {

void check(bool canBeWritten, char const* reason) {
    if (!canBeWritten) throw Failure{E_FAIL, reason};
}

void setComment(tree::Document& document, tree::Node* comment, std::string_view text) {
    check(text.find("--") == std::string_view::npos && !text.ends_with('-'),
          "a comment cannot hold \"--\" or end with \"-\"");
    tree::setText(document, comment, text);
}

void setInstruction(tree::Document& document, tree::Node* instruction, std::string_view text) {
    bool const startsBlank =
        !text.empty() && std::string_view{" \t\n"}.find(text.front()) != std::string_view::npos;
    check(text.find("?>") == std::string_view::npos && !startsBlank,
          "a processing instruction cannot hold \"?>\" or begin with white space");
    tree::setText(document, instruction, text);
}

void setValue(tree::Document& document, tree::Node* attribute, std::string_view value) {
    if (attribute->name->declaresNamespace && attribute->parent != nullptr) {
        check(!tree::isNamespaceNode(attribute), "a node of the namespace axis cannot be changed");
        checkDeclaration(attribute->parent, attribute, value);
    }
    tree::setText(document, attribute, value);
}

} // namespace

void setElementText(tree::Document& document, tree::Node* element, std::string_view text,
                    tree::Node* attribute) {
    tree::Node* const content =
        text.empty() ? nullptr : tree::newCharacterData(document, tree::NodeKind::text, text);
    try {
        document.lifetimes().removeChildren(element, attribute);
    } catch (...) {
        if (content != nullptr) tree::destroy(document, content);
        throw;
    }
    if (content != nullptr) tree::appendChild(document, element, content);
    element->flags &= static_cast<std::uint8_t>(~tree::breakInside);
}

void setContent(tree::Document& document, tree::Node* node, std::string_view text) {
    switch (node->kind) {
    case tree::NodeKind::element:
        return setElementText(document, node, text, binaryAnnotation(document, node));
    case tree::NodeKind::attribute: return setValue(document, node, text);
    case tree::NodeKind::comment: return setComment(document, node, text);
    case tree::NodeKind::processingInstruction: return setInstruction(document, node, text);
    case tree::NodeKind::text:
    case tree::NodeKind::cdata: return tree::setText(document, node, text);
    case tree::NodeKind::document:
    case tree::NodeKind::declaration: check(false, "this node has no text of its own to set");
    }
}

} // namespace tibxml::com
