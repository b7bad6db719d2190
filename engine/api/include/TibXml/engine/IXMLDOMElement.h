#pragma once

#include <TibXml/engine/IXMLDOMNode.h>

inline constexpr IID IID_IXMLDOMElement{
    0x2933BF86, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// A node that is an element.
class IXMLDOMElement : public IXMLDOMNode {
public:
    /// Gives the attribute of a qualified name this value, a string, and makes it when there is
    /// none. `E_INVALIDARG` for another kind of value and for characters that XML cannot hold,
    /// `E_FAIL` for what is not a name, for a prefix that is not declared here and for a namespace
    /// declaration that contradicts the element's names; nothing has changed then.
    virtual HRESULT setAttribute(BSTR name, VARIANT value) = 0;

protected:
    ~IXMLDOMElement() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMElement>
    : InterfaceIs<IID_IXMLDOMElement, IXMLDOMNode> {};
