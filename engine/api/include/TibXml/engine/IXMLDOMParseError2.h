#pragma once

#include <TibXml/engine/IXMLDOMParseError.h>

class IXMLDOMParseErrorCollection;

inline constexpr IID IID_IXMLDOMParseError2{
    0x3EFAA428, 0x272F, 0x11D2, {0x83, 0x6F, 0x00, 0x00, 0xF8, 0x7A, 0x77, 0x82}};

/// An error with those that were found together with it. Every error object of the engine offers
/// this.
class IXMLDOMParseError2 : public IXMLDOMParseError {
public:
    /// All errors, this one among them, in the order in which they were found; none when there was
    /// no error. A failed load has one, a validation at most 1000: it stops there.
    virtual HRESULT get_allErrors(IXMLDOMParseErrorCollection** errors) = 0;

protected:
    ~IXMLDOMParseError2() = default;
};

inline constexpr IID IID_IXMLDOMParseErrorCollection{
    0x3EFAA429, 0x272F, 0x11D2, {0x83, 0x6F, 0x00, 0x00, 0xF8, 0x7A, 0x77, 0x82}};

/// Errors in order, with a place in it for `get_next`.
class IXMLDOMParseErrorCollection : public IUnknown {
public:
    /// The error at an index from 0; `S_FALSE` for a negative index or one past the end.
    virtual HRESULT get_item(LONG index, IXMLDOMParseError2** error) = 0;

    virtual HRESULT get_length(LONG* length) = 0;

    /// The next error, the first one at first; `S_FALSE` after the last one.
    virtual HRESULT get_next(IXMLDOMParseError2** error) = 0;

    /// Makes the first error the next one again.
    virtual HRESULT reset() = 0;

protected:
    ~IXMLDOMParseErrorCollection() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMParseError2>
    : InterfaceIs<IID_IXMLDOMParseError2, IXMLDOMParseError> {};

template <>
struct tibxml::platform::InterfaceTraits<IXMLDOMParseErrorCollection>
    : InterfaceIs<IID_IXMLDOMParseErrorCollection, IUnknown> {};
