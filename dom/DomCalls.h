#pragma once

#include <TibXml/WXPath.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Variant.h>

#include <calls/EngineCall.h>

// What documents and nodes ask of the engine in the same way.
namespace tibxml::dom {

/// Asks an object for its identity, which is the same pointer by whatever interface it is asked.
/// `identity` is for comparing only, its reference is given back at once; null for no object and
/// after a failure, whose code is returned.
inline HRESULT askIdentity(IUnknown* object, IUnknown*& identity) {
    identity = nullptr;
    if (object == nullptr) return S_OK;
    void* found = nullptr;
    HRESULT const code = object->QueryInterface(IID_IUnknown, &found);
    if (FAILED(code) || found == nullptr) return code;
    identity = static_cast<IUnknown*>(found);
    identity->Release();
    return code;
}

/// The type of node that an element is, as an engine takes it.
inline constexpr VARIANT elementType = [] {
    VARIANT type{};
    type.vt = VT_INT;
    type.intVal = NODE_ELEMENT;
    return type;
}();

/// A new element of a document, not in any tree yet; `_com_error` when the name is refused and,
/// with `E_POINTER`, when there is no document.
template <class Document>
WXmlNodePtr newElement(EnginePtr<Document> const& document, engine::EngineString const& name,
                       wchar_t const* namespaceURI) {
    WXmlNodePtr element;
    // Null means no namespace.
    engine::EngineString const space{namespaceURI != nullptr ? namespaceURI : L""};
    engine::invoke(document, &IXMLDOMDocument::createNode, elementType, name.get(), space.get(),
                   element.GetAddress());
    return element;
}

/// All nodes that a path selects from a node or a document; `_com_error` when that fails.
template <class Context>
WXmlNodeListPtr selectNodes(EnginePtr<Context> const& context, WXPath const& path) {
    WXmlNodeListPtr nodes;
    engine::EngineString const expression{path.ToString()};
    engine::invoke(context, &IXMLDOMNode::selectNodes, expression.get(), nodes.GetAddress());
    return nodes;
}

/// Makes `nodes` a handle on a list; whether there is anything in it.
inline bool assignList(WXmlNodeListPtr const& list, WXmlNodeList& nodes) {
    nodes = WXmlNodeList{list};
    return engine::valueFrom(list, &IXMLDOMNodeList::get_length) > 0;
}

/// Whether this process runs unit tests, which a loaded module of a certain name shows. Settled for
/// the life of the process when it is first asked.
inline bool isTestMode() noexcept {
    static bool const marked = GetModuleHandleA("UnitTestMarker.dll") != nullptr;
    return marked;
}

} // namespace tibxml::dom
