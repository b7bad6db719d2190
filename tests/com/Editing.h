// What tests of editing have in common.
#pragma once

#include "Objects.h"

namespace tibxml::com::test {

// One node of every kind, a prefix, and something beside the root.
inline wchar_t const* const editable =
    L"<?xml version='1.0'?><!--top--><r xmlns:p='urn:p' at='1'><a><b/>t</a><!--c--><?pi d?>"
    L"<![CDATA[x]]></r><?end e?>";

inline Node newNode(IXMLDOMDocument* document, DOMNodeType type, wchar_t const* name,
                    wchar_t const* uri = nullptr) {
    Node node;
    EXPECT_EQ(document->createNode(variantOf(LONG{type}), _bstr_t{name}, _bstr_t{uri}, node.out()),
              S_OK);
    return node;
}

inline Node newElement(IXMLDOMDocument* document, wchar_t const* name,
                       wchar_t const* uri = nullptr) {
    return newNode(document, NODE_ELEMENT, name, uri);
}

inline Node newAttribute(IXMLDOMDocument* document, wchar_t const* name, wchar_t const* value) {
    Node const attribute = newNode(document, NODE_ATTRIBUTE, name);
    EXPECT_EQ(setText(attribute, value), S_OK);
    return attribute;
}

inline Node newText(IXMLDOMDocument* document, wchar_t const* text) {
    Node const node = newNode(document, NODE_TEXT, nullptr);
    EXPECT_EQ(setText(node, text), S_OK);
    return node;
}

inline Node parentOf(IXMLDOMNode* node) {
    Node parent;
    HRESULT const result = node->get_parentNode(parent.out());
    EXPECT_EQ(result, parent.get() != nullptr ? S_OK : S_FALSE);
    return parent;
}

inline Ptr<IXMLDOMDocument> ownerOf(IXMLDOMNode* node) {
    Ptr<IXMLDOMDocument> owner;
    EXPECT_EQ(node->get_ownerDocument(owner.out()), S_OK);
    return owner;
}

inline List childrenOf(IXMLDOMNode* node) {
    List children;
    EXPECT_EQ(node->get_childNodes(children.out()), S_OK);
    return children;
}

// The document that a node's markup loads to.
inline Document reloaded(IXMLDOMNode* node) {
    _bstr_t xml;
    EXPECT_EQ(node->get_xml(xml.GetAddress()), S_OK);
    return documentOf(xml);
}

} // namespace tibxml::com::test
