#pragma once

#include <TibXml/engine/IXMLDOMNode.h>

inline constexpr IID IID_IXMLDOMNodeList{
    0x2933BF82, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// Nodes in order: the snapshot that a query gives, or the live children of a node.
class IXMLDOMNodeList : public IUnknown {
public:
    /// The node at an index from 0; `S_FALSE` with null for a negative index or one past the end.
    virtual HRESULT get_item(LONG index, IXMLDOMNode** node) = 0;

    virtual HRESULT get_length(LONG* length) = 0;

protected:
    ~IXMLDOMNodeList() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMNodeList>
    : InterfaceIs<IID_IXMLDOMNodeList, IUnknown> {};
