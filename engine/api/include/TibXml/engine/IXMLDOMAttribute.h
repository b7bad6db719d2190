#pragma once

#include <TibXml/engine/IXMLDOMNode.h>

inline constexpr IID IID_IXMLDOMAttribute{
    0x2933BF85, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// A node that is an attribute.
class IXMLDOMAttribute : public IXMLDOMNode {
public:
    /// The qualified name.
    virtual HRESULT get_name(BSTR* name) = 0;

    /// The exact value, as a string.
    virtual HRESULT get_value(VARIANT* value) = 0;

    /// Sets the value from a string, as `put_text` does; `E_INVALIDARG` for another kind.
    virtual HRESULT put_value(VARIANT value) = 0;

protected:
    ~IXMLDOMAttribute() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMAttribute>
    : InterfaceIs<IID_IXMLDOMAttribute, IXMLDOMNode> {};
