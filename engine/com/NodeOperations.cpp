#include "NodeOperations.h"

#include <algorithm>
#include <new>

#include <TibXml/platform/Utf.h>
#include <output/ReadableText.h>
#include <output/Serializer.h>
#include <query/QueryCache.h>
#include <tree/Cloning.h>
#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/Text.h>

#include "DocumentObject.h"
#include "NodeLists.h"
#include "NodeValue.h"
#include "Text.h"

namespace tibxml::com {

namespace {

query::Query const& compiled(NodeHandle& handle, BSTR expression) {
    return *query::QueryCache::forThisThread().get(viewOf(expression),
                                                   handle.owner().selectionNamespaces());
}

bool isNcName(std::wstring_view name) noexcept {
    return !name.empty() && tree::isNameStart(name.front()) &&
           std::all_of(name.begin(), name.end(), tree::isNamePart);
}

bool isQName(std::wstring_view name) noexcept {
    std::size_t const colon = name.find(L':');
    if (colon == std::wstring_view::npos) return isNcName(name);
    return isNcName(name.substr(0, colon)) && isNcName(name.substr(colon + 1));
}

Failure refused(std::wstring_view name, char const* reason) {
    std::string utf8;
    if (!platform::appendUtf8(utf8, name)) return {E_FAIL, "a name holds no Unicode text"};
    return {E_FAIL, "'" + utf8 + "' " + reason};
}

struct QualifiedName {
    std::string_view prefix;
    std::string_view local;
};

QualifiedName split(std::string_view name) noexcept {
    std::size_t const colon = name.find(':');
    if (colon == std::string_view::npos) return {{}, name};
    return {name.substr(0, colon), name.substr(colon + 1)};
}

// The namespace that a name has by itself, if it has one.
std::string_view fixedNamespace(QualifiedName const& name) noexcept {
    if (name.prefix == "xml") return tree::xmlNamespace;
    bool const declares = name.prefix == "xmlns" || (name.prefix.empty() && name.local == "xmlns");
    return declares ? tree::xmlnsNamespace : std::string_view{};
}

// "xml" and "xmlns" and their namespaces belong together.
void checkReserved(QualifiedName const& name, std::string_view uri) {
    std::string_view const fixed = fixedNamespace(name);
    bool const reservedUri = uri == tree::xmlNamespace || uri == tree::xmlnsNamespace;
    if (fixed != uri && (!fixed.empty() || reservedUri))
        throw Failure{E_FAIL, "the prefix and the namespace do not belong together"};
}

bool isReservedTarget(std::string_view name) noexcept {
    return name.size() == 3 && (name[0] | 0x20) == 'x' && (name[1] | 0x20) == 'm' &&
           (name[2] | 0x20) == 'l';
}

tree::Node* newInstruction(tree::Document& document, std::wstring_view target) {
    XmlText const name{target};
    if (!isNcName(target) || isReservedTarget(name.view()))
        throw refused(target, "is not a target");
    return tree::newProcessingInstruction(document, document.names().intern({}, name.view(), {}),
                                          {});
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

tree::Name* internName(tree::Document& document, std::wstring_view qualifiedName,
                       std::wstring_view namespaceUri) {
    if (namespaceUri.empty()) {
        if (tree::Name* const known = document.names().findPlain(qualifiedName)) return known;
    }
    if (!isQName(qualifiedName)) throw refused(qualifiedName, "is not a name");
    XmlText const text{qualifiedName};
    XmlText const space{namespaceUri};
    if (!space.isValid()) throw Failure{E_FAIL, "a namespace holds no XML text"};
    QualifiedName const name = split(text.view());
    std::string_view const uri = space.view().empty() ? fixedNamespace(name) : space.view();
    checkReserved(name, uri);
    return document.names().intern(name.prefix, name.local, uri);
}

tree::Node* newNode(tree::Document& document, LONG type, std::wstring_view name,
                    std::wstring_view namespaceUri) {
    switch (type) {
    case NODE_ELEMENT: {
        tree::Name* const elementName = internName(document, name, namespaceUri);
        if (elementName->declaresNamespace)
            throw Failure{E_FAIL, "an element cannot have the name of a namespace declaration"};
        return tree::newElement(document, elementName);
    }
    case NODE_ATTRIBUTE:
        return tree::newAttribute(document, internName(document, name, namespaceUri), {});
    case NODE_TEXT: return tree::newCharacterData(document, tree::NodeKind::text, {});
    case NODE_CDATA_SECTION: return tree::newCharacterData(document, tree::NodeKind::cdata, {});
    case NODE_COMMENT: return tree::newCharacterData(document, tree::NodeKind::comment, {});
    case NODE_PROCESSING_INSTRUCTION: return newInstruction(document, name);
    default: throw Failure{E_INVALIDARG, "nodes of this type cannot be created"};
    }
}

IXMLDOMNode* wrapNew(DocumentObject& owner, tree::Document& storage, tree::Node* node) {
    try {
        return wrap(owner, storage, node);
    } catch (...) {
        tree::destroy(storage, node);
        throw;
    }
}

} // namespace tibxml::com
