#pragma once

#include <TibXml/engine/ISAXContentHandler.h>
#include <TibXml/engine/ISAXErrorHandler.h>
#include <TibXml/platform/Variant.h>

inline constexpr CLSID CLSID_SAXXMLReader60{
    0x88D96A0C, 0xF192, 0x11D4, {0xA6, 0x5F, 0x00, 0x40, 0x96, 0x32, 0x51, 0xE5}};

inline constexpr IID IID_ISAXXMLReader{
    0xA4F96ED0, 0xF829, 0x476E, {0x81, 0xC0, 0xCD, 0xC7, 0xBD, 0x2A, 0x08, 0x02}};

// What resolves entities and hears of document types has nothing to do here, where document types
// are refused; the reader knows these interfaces by name only.
class ISAXDTDHandler;
class ISAXEntityResolver;

/// Reads a document of any size and reports to a handler what is in it, without building a tree:
/// memory is needed for the open elements and the names, not for the content (of one tag, CDATA
/// section or processing instruction at a time, that is).
///
/// As strict as loading a document: XML 1.0 with Namespaces, no document type declaration, at most
/// 256 elements inside each other.
///
/// What fails leaves error information for `IID_ISAXXMLReader`; that of a document at fault begins
/// with its line and column: "3:14: reason".
class ISAXXMLReader : public IUnknown {
public:
    /// Features are named truth values: "prohibit-dtd", "normalize-line-breaks" and
    /// "http://xml.org/sax/features/namespaces" are true;
    /// "http://xml.org/sax/features/namespace-prefixes", "exhaustive-errors", "schema-validation",
    /// "http://xml.org/sax/features/external-general-entities" and
    /// "http://xml.org/sax/features/external-parameter-entities" are false. Putting what holds
    /// anyway is `S_OK`, the opposite `E_NOTIMPL`; another name is `E_INVALIDARG`.
    virtual HRESULT getFeature(wchar_t const* name, VARIANT_BOOL* value) = 0;
    virtual HRESULT putFeature(wchar_t const* name, VARIANT_BOOL value) = 0;

    /// There are no properties: `E_INVALIDARG` for every name.
    virtual HRESULT getProperty(wchar_t const* name, VARIANT* value) = 0;
    virtual HRESULT putProperty(wchar_t const* name, VARIANT value) = 0;

    /// There is none: `S_OK` with null, and putting another than null is `E_NOTIMPL`.
    virtual HRESULT getEntityResolver(ISAXEntityResolver** resolver) = 0;
    virtual HRESULT putEntityResolver(ISAXEntityResolver* resolver) = 0;

    /// The handler; null, as at first, for none. The reader holds a reference. A parse calls the
    /// handler that there was when it began.
    virtual HRESULT getContentHandler(ISAXContentHandler** handler) = 0;
    virtual HRESULT putContentHandler(ISAXContentHandler* handler) = 0;

    /// As the entity resolver.
    virtual HRESULT getDTDHandler(ISAXDTDHandler** handler) = 0;
    virtual HRESULT putDTDHandler(ISAXDTDHandler* handler) = 0;

    /// The handler of errors; null, as at first, for none.
    virtual HRESULT getErrorHandler(ISAXErrorHandler** handler) = 0;
    virtual HRESULT putErrorHandler(ISAXErrorHandler* handler) = 0;

    /// There is none: `S_OK` with null, and putting another than null is `E_NOTIMPL`. Relative
    /// paths begin at the process's current folder.
    virtual HRESULT getBaseURL(wchar_t const** url) = 0;
    virtual HRESULT putBaseURL(wchar_t const* url) = 0;
    virtual HRESULT getSecureBaseURL(wchar_t const** url) = 0;
    virtual HRESULT putSecureBaseURL(wchar_t const* url) = 0;

    /// Parses a string, up to its first NUL and whatever encoding it declares, or an object that is
    /// a stream, from its current position to its end. `S_OK` when the whole document was read; the
    /// handler's code when that stopped the parse; a failing code, after the events up to there,
    /// for a document at fault or a stream that fails: 0xC00CE584 for a document type declaration,
    /// 0xC00CE586 for too much depth, 0xC00CE587 for a source that cannot be read. `E_INVALIDARG`
    /// for another kind of variant, `E_FAIL` while this reader is parsing.
    virtual HRESULT parse(VARIANT input) = 0;

    /// The same with a file: a path as it is, then as a `file:` URL, then with its `%XX` decoded.
    virtual HRESULT parseURL(wchar_t const* url) = 0;

protected:
    ~ISAXXMLReader() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<ISAXXMLReader> : InterfaceIs<IID_ISAXXMLReader, IUnknown> {
};
