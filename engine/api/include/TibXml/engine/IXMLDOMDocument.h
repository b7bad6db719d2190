#pragma once

#include <TibXml/engine/IXMLDOMAttribute.h>
#include <TibXml/engine/IXMLDOMElement.h>
#include <TibXml/engine/IXMLDOMNamedNodeMap.h>
#include <TibXml/engine/IXMLDOMNodeList.h>
#include <TibXml/engine/IXMLDOMParseError.h>

inline constexpr CLSID CLSID_DOMDocument60{
    0x88D96A05, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

inline constexpr IID IID_IXMLDOMDocument{
    0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// A document. It lives as long as anything refers to it or to one of its nodes.
class IXMLDOMDocument : public IXMLDOMNode {
public:
    /// The root element; `S_FALSE` when there is none.
    virtual HRESULT get_documentElement(IXMLDOMElement** element) = 0;

    /// Makes an element the root, in the place of the old one, which is detached; what stands
    /// beside the root stays. Moves and refuses as `insertBefore` does; `E_INVALIDARG` for null.
    virtual HRESULT putref_documentElement(IXMLDOMElement* element) = 0;

    /// A new detached node of this document. `type` is a `DOMNodeType` in an integer variant:
    /// element, attribute, text, CDATA section, comment or processing instruction. An empty or null
    /// namespace means none; a prefixed name without a namespace gets that of its prefix where the
    /// node is inserted. `E_FAIL` for a name that is not valid, `E_INVALIDARG` for another type.
    virtual HRESULT createNode(VARIANT type, BSTR name, BSTR namespaceURI, IXMLDOMNode** node) = 0;

    /// A new detached attribute with an empty value; names as for `createNode`.
    virtual HRESULT createAttribute(BSTR name, IXMLDOMAttribute** attribute) = 0;

    /// Replaces the content by that of a file (a string variant with its path) or of a stream (an
    /// object variant, read from its current position to the end). `S_OK` and true, or `S_FALSE`
    /// and false with an empty document and the reason in `get_parseError`. `E_INVALIDARG` for
    /// another kind of variant, which changes nothing.
    virtual HRESULT load(VARIANT source, VARIANT_BOOL* isSuccessful) = 0;

    /// The same from a string, up to its first NUL; the encoding it declares does not count.
    virtual HRESULT loadXML(BSTR text, VARIANT_BOOL* isSuccessful) = 0;

    /// Writes the document in its declared encoding to a file, which is replaced as a whole or not
    /// at all, or to a stream; variants as for `load`.
    virtual HRESULT save(VARIANT destination) = 0;

    /// Why the last load failed; always an object, with error code 0 when it did not.
    virtual HRESULT get_parseError(IXMLDOMParseError** error) = 0;

    /// Whether loading keeps text that is nothing but white space; false at first.
    virtual HRESULT get_preserveWhiteSpace(VARIANT_BOOL* preserves) = 0;
    virtual HRESULT put_preserveWhiteSpace(VARIANT_BOOL preserves) = 0;

protected:
    ~IXMLDOMDocument() = default;
};

inline constexpr IID IID_IXMLDOMDocument2{
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// A document with properties and schemas.
class IXMLDOMDocument2 : public IXMLDOMDocument {
public:
    /// The collection of schemas that `validate` uses, as an object variant; `S_FALSE` and an empty
    /// variant when there is none.
    virtual HRESULT get_schemas(VARIANT* schemas) = 0;

    /// Makes `validate` use a collection of schemas (`IXMLDOMSchemaCollection`), given as an object
    /// variant, until another one is put or the document is gone; loading does not change it. An
    /// empty variant, a null one, and a null object take it away. `E_INVALIDARG` for anything else.
    virtual HRESULT putref_schemas(VARIANT schemas) = 0;

    /// Whether the document, as it is now, is valid by the schema for the namespace of its root:
    /// `S_OK` and an error object with code 0, or `S_FALSE` and one that says what is wrong. It is
    /// an `IXMLDOMParseError2`, which has all errors. The code is 0xC00CE223 when there is no root
    /// element, 0xC00CE224 when there is no schema for its namespace.
    ///
    /// The line of an error is the one on which the start tag of the element at fault ends: in the
    /// file, when the document was loaded from one and neither has changed since; otherwise in the
    /// text that `get_xml` gives. Schema locations in the document are not followed.
    virtual HRESULT validate(IXMLDOMParseError** error) = 0;

    /// Sets one of these, by its exact name: "SelectionNamespaces" (a string of declarations such
    /// as `xmlns:p='urn:x'`, the prefixes that queries may use), "SelectionLanguage" ("XPath" is
    /// the only one), "NewParser" and "AllowDocumentFunction" (booleans; an integer counts as true
    /// unless it is 0). `E_FAIL` for another name or value; after a failed "SelectionNamespaces" no
    /// prefix works until it is set again.
    virtual HRESULT setProperty(BSTR name, VARIANT value) = 0;

    /// Reads what `setProperty` set. `E_FAIL` for an unknown name.
    virtual HRESULT getProperty(BSTR name, VARIANT* value) = 0;

protected:
    ~IXMLDOMDocument2() = default;
};

inline constexpr IID IID_IXMLDOMDocument3{
    0x2933BF96, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

/// The document interface that the library asks for.
class IXMLDOMDocument3 : public IXMLDOMDocument2 {
public:
    /// A detached copy, owned by this document, of a node of any document; names keep their
    /// namespaces. `E_FAIL` for a document, `E_INVALIDARG` for a null or foreign object.
    virtual HRESULT importNode(IXMLDOMNode* node, VARIANT_BOOL deep, IXMLDOMNode** copy) = 0;

protected:
    ~IXMLDOMDocument3() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMDocument>
    : InterfaceIs<IID_IXMLDOMDocument, IXMLDOMNode> {};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMDocument2>
    : InterfaceIs<IID_IXMLDOMDocument2, IXMLDOMDocument> {};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMDocument3>
    : InterfaceIs<IID_IXMLDOMDocument3, IXMLDOMDocument2> {};
