#pragma once

#include <TibXml/platform/IUnknown.h>

inline constexpr IID IID_ISAXLocator{
    0x9B7E472A, 0x0DE4, 0x4640, {0xBF, 0xF3, 0x84, 0xD3, 0x8A, 0x05, 0x1C, 0x31}};

/// Where in the source a parse stands: at the end of what the handler gets, or inside the
/// tag that it gets. After a parse that failed it stays at the place of the error, after any
/// other it answers 0.
class ISAXLocator : public IUnknown {
public:
    /// The character in its line, from 1.
    virtual HRESULT getColumnNumber(int* column) = 0;

    /// The line, from 1.
    virtual HRESULT getLineNumber(int* line) = 0;

    /// Always null: only entities outside of the document have one, and there are none.
    virtual HRESULT getPublicId(wchar_t const** id) = 0;

    /// The path that `parseURL` was given, null for `parse`. It belongs to the locator.
    virtual HRESULT getSystemId(wchar_t const** id) = 0;

protected:
    ~ISAXLocator() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<ISAXLocator> : InterfaceIs<IID_ISAXLocator, IUnknown> {};
