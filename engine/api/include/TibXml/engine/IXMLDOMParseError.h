#pragma once

#include <TibXml/platform/BStr.h>
#include <TibXml/platform/IUnknown.h>

inline constexpr IID IID_IXMLDOMParseError{
    0x3EFAA426, 0x272F, 0x11D2, {0x83, 0x6F, 0x00, 0x00, 0xF8, 0x7A, 0x77, 0x82}};

/// Why a load failed, or what a validation found first. Everything is 0 or empty when all went
/// well.
class IXMLDOMParseError : public IUnknown {
public:
    /// 0 when there was no error. 0xC00CE584 is a document type declaration.
    virtual HRESULT get_errorCode(LONG* code) = 0;

    /// The path that was given to `load`; empty for strings and streams.
    virtual HRESULT get_url(BSTR* url) = 0;

    /// What is wrong, in words.
    virtual HRESULT get_reason(BSTR* reason) = 0;

    /// The line of the source in which the error stands, without its end; empty for a validation.
    virtual HRESULT get_srcText(BSTR* text) = 0;

    /// The number of that line, from 1.
    virtual HRESULT get_line(LONG* line) = 0;

    /// The character in that line, from 1; 0 for a validation, which knows only lines.
    virtual HRESULT get_linepos(LONG* position) = 0;

    /// The bytes of UTF-8 from the start of the document; 0 for a validation.
    virtual HRESULT get_filepos(LONG* position) = 0;

protected:
    ~IXMLDOMParseError() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMParseError>
    : InterfaceIs<IID_IXMLDOMParseError, IUnknown> {};
