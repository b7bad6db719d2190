#pragma once

#include <TibXml/engine/IXMLDOMNode.h>

inline constexpr IID IID_IXMLDOMElement{
    0x2933BF86, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// A node that is an element.
class IXMLDOMElement : public IXMLDOMNode {
protected:
    ~IXMLDOMElement() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMElement>
    : InterfaceIs<IID_IXMLDOMElement, IXMLDOMNode> {};
