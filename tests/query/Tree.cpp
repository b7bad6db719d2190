#include "Tree.h"

#include <stdexcept>

#include <TibXml/platform/Utf.h>

#include <reader/Reader.h>
#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/Name.h>
#include <tree/NamespaceNodes.h>
#include <tree/Namespaces.h>

namespace tibxml::query::test {

namespace {

std::string describeElement(tree::Node const* node) {
    std::string text{node->name->qualified};
    if (tree::Node const* id = tree::findAttribute(node, std::string_view{"id"}))
        text.append("#").append(id->text());
    return text;
}

std::string describeNamespace(tree::Node const* node) {
    return std::string{tree::declaredPrefix(node)}.append("=").append(node->text());
}

std::string enclosed(std::string_view before, std::string_view text, std::string_view after) {
    return std::string{before}.append(text).append(after);
}

} // namespace

Tree::Tree(std::string_view xml) : document_{tree::DocumentRef::adopt(tree::Document::create())} {
    reader::ReadError error;
    document_->setPreservesWhiteSpace(true);
    if (!reader::read(*document_, {xml, reader::EncodingRule::alwaysUtf8}, error))
        throw std::runtime_error{error.reason};
}

tree::Node* Tree::find(std::wstring_view expression) const {
    std::vector<tree::Node*> const nodes = select(expression);
    if (nodes.size() != 1) throw std::runtime_error{"not one node: " + narrow(expression)};
    return nodes.front();
}

std::vector<tree::Node*> Tree::select(std::wstring_view expression, tree::Node* context,
                                      Namespaces const& namespaces) const {
    std::vector<tree::Node*> nodes;
    selectAll(*compile(expression, namespaces), *document_, context != nullptr ? context : node(),
              nodes);
    return nodes;
}

std::string Tree::describe(std::wstring_view expression, tree::Node* context,
                           Namespaces const& namespaces) const {
    document_->lifetimes().pin();
    std::vector<tree::Node*> const nodes = select(expression, context, namespaces);
    tree::Node const* const first = selectFirst(*compile(expression, namespaces), *document_,
                                                context != nullptr ? context : node());
    std::string text = test::describe(nodes);
    if (first != (nodes.empty() ? nullptr : nodes.front())) text += " but another first";
    document_->lifetimes().unpin();
    return text;
}

std::string describe(tree::Node const* node) {
    if (tree::isNamespaceNode(node)) return describeNamespace(node);
    switch (node->kind) {
    case tree::NodeKind::element: return describeElement(node);
    case tree::NodeKind::attribute:
        return enclosed("@", node->name->qualified, "=").append(node->text());
    case tree::NodeKind::text: return enclosed("'", node->text(), "'");
    case tree::NodeKind::cdata: return enclosed("[", node->text(), "]");
    case tree::NodeKind::comment: return enclosed("<!--", node->text(), "-->");
    case tree::NodeKind::processingInstruction:
        return enclosed("<?", node->name->qualified, " ").append(node->text()).append("?>");
    case tree::NodeKind::document: return "/";
    case tree::NodeKind::declaration: return "declaration";
    }
    return {};
}

std::string describe(std::vector<tree::Node*> const& nodes) {
    std::string text;
    for (tree::Node const* node : nodes)
        text.append(text.empty() ? "" : " ").append(describe(node));
    return text;
}

std::string narrow(std::wstring_view text) {
    std::string result;
    platform::appendUtf8(result, text);
    return result;
}

} // namespace tibxml::query::test
