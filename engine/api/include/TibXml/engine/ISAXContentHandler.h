#pragma once

#include <TibXml/engine/ISAXAttributes.h>
#include <TibXml/engine/ISAXLocator.h>

inline constexpr IID IID_ISAXContentHandler{
    0x1545CDFA, 0x9E4E, 0x4497, {0xA8, 0xA4, 0x2B, 0xF7, 0xD0, 0x11, 0x2C, 0x44}};

/// What a reader calls while it parses; callers implement it. A failing code stops the parse at
/// once and is what the parse returns; after any success code it goes on. Functions are not meant
/// to throw: an exception stops the parse too, which then returns `E_UNEXPECTED` or the code that
/// stands for it.
///
/// Texts are a pointer and a count of characters, not terminated; they belong to the engine and are
/// valid during the call only.
class ISAXContentHandler : public IUnknown {
public:
    /// The first call of every parse. The locator may be kept.
    virtual HRESULT putDocumentLocator(ISAXLocator* locator) = 0;

    virtual HRESULT startDocument() = 0;

    /// The last call of a parse that succeeds; a parse that fails has none.
    virtual HRESULT endDocument() = 0;

    /// A namespace declaration of the element that starts next, with an empty prefix for the
    /// default namespace; declarations come in source order, and end after their element in the
    /// reverse order.
    virtual HRESULT startPrefixMapping(wchar_t const* prefix, int prefixLength, wchar_t const* uri,
                                       int uriLength) = 0;
    virtual HRESULT endPrefixMapping(wchar_t const* prefix, int prefixLength) = 0;

    /// An element. The namespace is empty when there is none, the qualified name is as written.
    virtual HRESULT startElement(wchar_t const* uri, int uriLength, wchar_t const* local,
                                 int localLength, wchar_t const* qualified, int qualifiedLength,
                                 ISAXAttributes* attributes) = 0;
    virtual HRESULT endElement(wchar_t const* uri, int uriLength, wchar_t const* local,
                               int localLength, wchar_t const* qualified, int qualifiedLength) = 0;

    /// A piece of the text inside the root element, white space and CDATA sections included, line
    /// ends as LF. Never empty; one text may come in many pieces, but never in the middle of a
    /// character.
    virtual HRESULT characters(wchar_t const* text, int length) = 0;

    /// Never called: which white space can be ignored is known from document types only.
    virtual HRESULT ignorableWhitespace(wchar_t const* text, int length) = 0;

    virtual HRESULT processingInstruction(wchar_t const* target, int targetLength,
                                          wchar_t const* data, int dataLength) = 0;

    /// Never called: there are no entities to skip.
    virtual HRESULT skippedEntity(wchar_t const* name, int length) = 0;

protected:
    ~ISAXContentHandler() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<ISAXContentHandler>
    : InterfaceIs<IID_ISAXContentHandler, IUnknown> {};
