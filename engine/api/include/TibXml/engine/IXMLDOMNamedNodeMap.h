#pragma once

#include <TibXml/engine/IXMLDOMNode.h>

inline constexpr IID IID_IXMLDOMNamedNodeMap{
    0x2933BF83, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// The attributes of an element, namespace declarations included, in the order in which they stand
/// in the source. Live: it always shows the element as it is.
class IXMLDOMNamedNodeMap : public IUnknown {
public:
    /// The attribute with a qualified name, exactly as written; `S_FALSE` when there is none.
    virtual HRESULT getNamedItem(BSTR name, IXMLDOMNode** attribute) = 0;

    /// Puts an attribute on the element, in the place of one with the same qualified name if there
    /// is one, which then is detached. An attribute of another element or document moves here. The
    /// attribute itself is handed out if `result` is not null. `E_INVALIDARG` for null and for a
    /// foreign object, `E_FAIL` for a node that is not an attribute, a prefix that is not declared
    /// here, and a namespace declaration that the element's own names contradict.
    virtual HRESULT setNamedItem(IXMLDOMNode* attribute, IXMLDOMNode** result) = 0;

    /// Detaches an attribute by its qualified name and hands it out if `result` is not null;
    /// `S_FALSE` when there is none.
    virtual HRESULT removeNamedItem(BSTR name, IXMLDOMNode** result) = 0;

    /// The attribute at an index from 0; `S_FALSE` for a negative index or one past the end.
    virtual HRESULT get_item(LONG index, IXMLDOMNode** attribute) = 0;

    virtual HRESULT get_length(LONG* length) = 0;

protected:
    ~IXMLDOMNamedNodeMap() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMNamedNodeMap>
    : InterfaceIs<IID_IXMLDOMNamedNodeMap, IUnknown> {};
