#include "NodeOperations.h"

#include <new>

#include <output/ReadableText.h>
#include <output/Serializer.h>
#include <query/QueryCache.h>
#include <tree/Cloning.h>

#include "DocumentObject.h"
#include "NodeFactory.h"
#include "NodeLists.h"
#include "NodeValue.h"
#include "Text.h"

namespace tibxml::com {

namespace {

query::Query const& compiled(NodeHandle& handle, BSTR expression) {
    return *query::QueryCache::forThisThread().get(viewOf(expression),
                                                   handle.owner().selectionNamespaces());
}

} // namespace

BSTR nodeName(NodeHandle& handle) {
    tree::Node const& node = *handle.node();
    if (node.name != nullptr) return toBstr(handle.storage().names().wideForm(*node.name));
    switch (node.kind) {
    case tree::NodeKind::comment: return toBstr(L"#comment");
    case tree::NodeKind::cdata: return toBstr(L"#cdata-section");
    case tree::NodeKind::document: return toBstr(L"#document");
    default: return toBstr(L"#text");
    }
}

DOMNodeType nodeType(NodeHandle& handle) noexcept {
    switch (handle.node()->kind) {
    case tree::NodeKind::element: return NODE_ELEMENT;
    case tree::NodeKind::attribute: return NODE_ATTRIBUTE;
    case tree::NodeKind::text: return NODE_TEXT;
    case tree::NodeKind::cdata: return NODE_CDATA_SECTION;
    case tree::NodeKind::comment: return NODE_COMMENT;
    case tree::NodeKind::document: return NODE_DOCUMENT;
    case tree::NodeKind::processingInstruction:
    case tree::NodeKind::declaration: return NODE_PROCESSING_INSTRUCTION;
    }
    return NODE_INVALID;
}

IXMLDOMNode* parentNode(NodeHandle& handle) {
    tree::Node const* const node = handle.node();
    return node->is(tree::NodeKind::attribute) ? nullptr : wrapBeside(handle, node->parent);
}

IXMLDOMNodeList* childNodes(NodeHandle& handle) {
    return new ChildList{handle};
}

IXMLDOMDocument* ownerDocument(NodeHandle& handle) {
    if (handle.node()->is(tree::NodeKind::document)) return nullptr;
    handle.owner().AddRef();
    return &handle.owner();
}

IXMLDOMNode* cloneNode(NodeHandle& handle, bool deep) {
    if (handle.node()->is(tree::NodeKind::document)) return handle.owner().clone(deep);
    auto const depth = deep ? tree::CloneDepth::deep : tree::CloneDepth::shallow;
    tree::Document& storage = handle.storage();
    tree::Node* const copy = tree::clone(storage, storage, handle.node(), depth);
    return wrapNew(handle.owner(), storage, copy);
}

BSTR textOf(NodeHandle& handle) {
    std::string storage;
    return toBstr(output::readableText(handle.storage(), handle.node(), storage));
}

void setText(NodeHandle& handle, BSTR text) {
    tree::Node* const node = handle.node();
    XmlText content{viewOf(text)};
    requireValid(content);
    if (!node->is(tree::NodeKind::attribute)) content.normalizeLineEnds();
    setContent(handle.storage(), node, content.view());
}

BSTR xmlOf(NodeHandle& handle) {
    BSTR const xml = output::xmlAsBstr(handle.storage(), handle.node());
    if (xml == nullptr) throw std::bad_alloc{};
    return xml;
}

IXMLDOMNodeList* selectNodes(NodeHandle& handle, BSTR expression) {
    query::Query const& query = compiled(handle, expression);
    std::vector<tree::Node*> nodes;
    query::selectAll(query, handle.storage(), handle.node(), nodes);
    return new QueryList{handle, std::move(nodes)};
}

IXMLDOMNode* selectSingleNode(NodeHandle& handle, BSTR expression) {
    query::Query const& query = compiled(handle, expression);
    return wrapBeside(handle, query::selectFirst(query, handle.storage(), handle.node()));
}

} // namespace tibxml::com
