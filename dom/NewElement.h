#pragma once

#include <TibXml/EngineCall.h>
#include <TibXml/platform/Variant.h>

namespace tibxml::dom {

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
    // Null is no namespace.
    engine::EngineString const space{namespaceURI != nullptr ? namespaceURI : L""};
    engine::invoke(document, &IXMLDOMDocument::createNode, elementType, name.get(), space.get(),
                   element.GetAddress());
    return element;
}

} // namespace tibxml::dom
