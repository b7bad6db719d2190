#pragma once

#include <TibXml/engine/IXMLDOMNode.h>

inline constexpr CLSID CLSID_XMLSchemaCache60{
    0x88D96A07, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

inline constexpr IID IID_IXMLDOMSchemaCollection{
    0x373984C8, 0xB845, 0x449B, {0x91, 0xE7, 0x45, 0xAC, 0x83, 0x03, 0x6A, 0xDE}};

/// Compiled schemas, one per target namespace. A document that is to be validated refers to such a
/// collection (`IXMLDOMDocument2::putref_schemas`); one collection serves any number of documents.
class IXMLDOMSchemaCollection : public IUnknown {
public:
    /// Compiles a schema and puts it in the place of the one for its namespace, if there is one.
    /// `namespaceURI` is the schema's target namespace, empty or null for none; `schema` is a
    /// document (an object variant) or the path of one (a string variant). What the schema
    /// includes, imports or redefines is read from local files, relative to its own path, and an
    /// import without a location may mean a schema that the collection has already.
    ///
    /// `E_FAIL`, with the reason as error information, when the path is not a document, the
    /// document is not a schema, its target namespace is another one, or it does not compile;
    /// `E_INVALIDARG` for another kind of variant or object. The collection is unchanged after a
    /// failure. Later changes to the document change nothing here.
    virtual HRESULT add(BSTR namespaceURI, VARIANT schema) = 0;

    /// The root element of the schema for a namespace, as it was added; `S_FALSE` when there is
    /// none.
    virtual HRESULT get(BSTR namespaceURI, IXMLDOMNode** schema) = 0;

    /// Takes the schema for a namespace out; `S_FALSE` when there is none.
    virtual HRESULT remove(BSTR namespaceURI) = 0;

    virtual HRESULT get_length(LONG* length) = 0;

    /// The namespace of the schema at an index from 0, in the order in which they were added;
    /// `S_FALSE` and null for a negative index or one past the end.
    virtual HRESULT get_namespaceURI(LONG index, BSTR* namespaceURI) = 0;

    /// Adds all schemas of another collection, as they are compiled there; those for the same
    /// namespaces are replaced. `E_INVALIDARG` for null and for a foreign object.
    virtual HRESULT addCollection(IXMLDOMSchemaCollection* others) = 0;

protected:
    ~IXMLDOMSchemaCollection() = default;
};

inline constexpr IID IID_IXMLDOMSchemaCollection2{
    0x50EA08B0, 0xDD1B, 0x4664, {0x9A, 0x50, 0xC2, 0xF4, 0x0F, 0x4B, 0xD7, 0x9A}};

class IXMLDOMSchemaCollection2 : public IXMLDOMSchemaCollection {
public:
    /// `S_OK`: what is in the collection has been compiled when it was added.
    virtual HRESULT validate() = 0;

    /// Whether `add` compiles at once; true at first. It does in any case: the value is only kept.
    virtual HRESULT put_validateOnLoad(VARIANT_BOOL validates) = 0;
    virtual HRESULT get_validateOnLoad(VARIANT_BOOL* validates) = 0;

protected:
    ~IXMLDOMSchemaCollection2() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMSchemaCollection>
    : InterfaceIs<IID_IXMLDOMSchemaCollection, IUnknown> {};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMSchemaCollection2>
    : InterfaceIs<IID_IXMLDOMSchemaCollection2, IXMLDOMSchemaCollection> {};
