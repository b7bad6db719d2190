#include "Peer.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <tuple>

#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <tree/Name.h>
#include <tree/NamespaceNodes.h>
#include <tree/Namespaces.h>

namespace tibxml::query::test {

namespace {

using ContextPtr = std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)>;
using ObjectPtr = std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)>;

xmlChar const* asXml(char const* text) noexcept {
    return reinterpret_cast<xmlChar const*>(text);
}

void ignoreError(void*, xmlError*) {}

std::string_view textOf(xmlChar const* text) noexcept {
    return text != nullptr ? reinterpret_cast<char const*>(text) : "";
}

bool sameKind(xmlNode const* theirs, tree::Node const* ours) noexcept {
    switch (ours->kind) {
    case tree::NodeKind::element: return theirs->type == XML_ELEMENT_NODE;
    case tree::NodeKind::attribute: return theirs->type == XML_ATTRIBUTE_NODE;
    case tree::NodeKind::text: return theirs->type == XML_TEXT_NODE;
    case tree::NodeKind::cdata: return theirs->type == XML_CDATA_SECTION_NODE;
    case tree::NodeKind::processingInstruction: return theirs->type == XML_PI_NODE;
    case tree::NodeKind::comment: return theirs->type == XML_COMMENT_NODE;
    case tree::NodeKind::document: return theirs->type == XML_DOCUMENT_NODE;
    case tree::NodeKind::declaration: return false;
    }
    return false;
}

tree::Node* withoutDeclaration(tree::Node* node) noexcept {
    return node != nullptr && node->is(tree::NodeKind::declaration) ? node->next : node;
}

tree::Node* withoutNamespaces(tree::Node* node) noexcept {
    while (node != nullptr && node->name->declaresNamespace)
        node = node->next;
    return node;
}

} // namespace

Peer::Peer(std::string const& xml, Tree const& tree)
    : document_{xmlReadMemory(xml.data(), static_cast<int>(xml.size()), nullptr, nullptr,
                              XML_PARSE_NONET)},
      tree_{tree.document()} {
    if (document_ == nullptr) throw std::runtime_error{"the peer cannot read the document"};
    pair(reinterpret_cast<xmlNode*>(document_), tree.node());
}

Peer::~Peer() {
    xmlFreeDoc(document_);
}

void Peer::pair(xmlNode* theirs, tree::Node* ours) {
    if (!sameKind(theirs, ours)) throw std::runtime_error{"the trees differ"};
    places_[ours] = order_.size();
    order_.push_back(ours);
    ours_[theirs] = ours;
    theirs_[ours] = theirs;
    if (theirs->type == XML_ATTRIBUTE_NODE) return;
    if (theirs->type == XML_ELEMENT_NODE) pairAttributes(theirs, ours);
    xmlNode* child = theirs->children;
    tree::Node* ourChild = withoutDeclaration(ours->firstChild());
    for (; child != nullptr && ourChild != nullptr; ourChild = ourChild->next, child = child->next)
        pair(child, ourChild);
    if (child != nullptr || ourChild != nullptr) throw std::runtime_error{"the trees differ"};
}

void Peer::pairAttributes(xmlNode* theirs, tree::Node* ours) {
    tree::Node* attribute = withoutNamespaces(ours->firstAttribute());
    for (xmlAttr* theirAttribute = theirs->properties; theirAttribute != nullptr;
         theirAttribute = theirAttribute->next) {
        if (attribute == nullptr) throw std::runtime_error{"the attributes differ"};
        pair(reinterpret_cast<xmlNode*>(theirAttribute), attribute);
        attribute = withoutNamespaces(attribute->next);
    }
    if (attribute != nullptr) throw std::runtime_error{"the attributes differ"};
}

// The peer makes a namespace anew whenever it is asked for, with the element in place of the next
// declaration.
tree::Node* Peer::counterpart(xmlNode const* theirs) const {
    if (theirs->type != XML_NAMESPACE_DECL) return ours_.at(theirs);
    auto const* const space = reinterpret_cast<xmlNs const*>(theirs);
    auto const* const element = reinterpret_cast<xmlNode const*>(space->next);
    return tree::NamespaceNodes::get(tree_, ours_.at(element), textOf(space->prefix),
                                     textOf(space->href));
}

void Peer::sort(std::vector<tree::Node*>& nodes) const {
    using Place = std::tuple<std::size_t, bool, std::string_view>;
    auto const placeOf = [this](tree::Node const* node) -> Place {
        if (!tree::isNamespaceNode(node)) return {places_.at(node), false, {}};
        return {places_.at(node->parent), true, tree::declaredPrefix(node)};
    };
    std::sort(nodes.begin(), nodes.end(),
              [&](tree::Node* a, tree::Node* b) { return placeOf(a) < placeOf(b); });
}

std::optional<std::vector<tree::Node*>> Peer::select(std::string const& expression,
                                                     tree::Node* context) const {
    ContextPtr const xpath{xmlXPathNewContext(document_), &xmlXPathFreeContext};
    xpath->error = reinterpret_cast<xmlStructuredErrorFunc>(&ignoreError);
    xpath->node = theirs_.at(context);
    xmlXPathRegisterNs(xpath.get(), asXml("p"), asXml("urn:p"));
    xmlXPathRegisterNs(xpath.get(), asXml("q"), asXml("urn:q"));
    // Parentheses keep the peer from its shortcut for plain paths, which loses the context node of
    // ".//.".
    std::string const text = '(' + expression + ')';
    ObjectPtr const object{xmlXPathEvalExpression(asXml(text.c_str()), xpath.get()),
                           &xmlXPathFreeObject};
    if (object == nullptr || object->type != XPATH_NODESET) return std::nullopt;
    std::vector<tree::Node*> nodes;
    if (object->nodesetval == nullptr) return nodes;
    for (int i = 0; i < object->nodesetval->nodeNr; ++i)
        nodes.push_back(counterpart(object->nodesetval->nodeTab[i]));
    sort(nodes);
    return nodes;
}

} // namespace tibxml::query::test
