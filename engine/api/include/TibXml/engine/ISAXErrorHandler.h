#pragma once

#include <TibXml/engine/ISAXLocator.h>

inline constexpr IID IID_ISAXErrorHandler{
    0xA60511C4, 0xCCF5, 0x479E, {0x98, 0xA3, 0xDC, 0x8D, 0xC5, 0x45, 0xB7, 0xD0}};

/// Hears why a parse fails; callers implement it. The locator is at the place of the error.
class ISAXErrorHandler : public IUnknown {
public:
    /// Never called: every error of a document is fatal.
    virtual HRESULT error(ISAXLocator* locator, wchar_t const* message, HRESULT code) = 0;

    /// The document or its source is at fault; once, before the parse returns that code. What this
    /// function answers does not matter.
    virtual HRESULT fatalError(ISAXLocator* locator, wchar_t const* message, HRESULT code) = 0;

    /// Never called.
    virtual HRESULT ignorableWarning(ISAXLocator* locator, wchar_t const* message,
                                     HRESULT code) = 0;

protected:
    ~ISAXErrorHandler() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<ISAXErrorHandler>
    : InterfaceIs<IID_ISAXErrorHandler, IUnknown> {};
