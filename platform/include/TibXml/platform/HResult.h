#pragma once

#include <TibXml/platform/WindowsTypes.h>

namespace tibxml::platform {

/// A result code from the form in which codes are written down, a 32-bit hexadecimal number.
constexpr HRESULT resultCode(std::uint32_t bits) noexcept {
    return static_cast<HRESULT>(bits);
}

} // namespace tibxml::platform

// Successes.
inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1; ///< done, but there was nothing to find

// Failures of any call.
inline constexpr HRESULT E_NOTIMPL = tibxml::platform::resultCode(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = tibxml::platform::resultCode(0x80004002);
inline constexpr HRESULT E_POINTER = tibxml::platform::resultCode(0x80004003);
inline constexpr HRESULT E_ABORT = tibxml::platform::resultCode(0x80004004);
inline constexpr HRESULT E_FAIL = tibxml::platform::resultCode(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = tibxml::platform::resultCode(0x8000FFFF);
inline constexpr HRESULT E_ACCESSDENIED = tibxml::platform::resultCode(0x80070005);
inline constexpr HRESULT E_OUTOFMEMORY = tibxml::platform::resultCode(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = tibxml::platform::resultCode(0x80070057);

// Making objects.
inline constexpr HRESULT CLASS_E_NOAGGREGATION = tibxml::platform::resultCode(0x80040110);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = tibxml::platform::resultCode(0x80040154);

// Variants and arrays.
inline constexpr HRESULT DISP_E_TYPEMISMATCH = tibxml::platform::resultCode(0x80020005);
inline constexpr HRESULT DISP_E_BADVARTYPE = tibxml::platform::resultCode(0x80020008);
inline constexpr HRESULT DISP_E_BADINDEX = tibxml::platform::resultCode(0x8002000B);
inline constexpr HRESULT DISP_E_ARRAYISLOCKED = tibxml::platform::resultCode(0x8002000D);

// Streams.
inline constexpr HRESULT STG_E_INVALIDFUNCTION = tibxml::platform::resultCode(0x80030001);
inline constexpr HRESULT STG_E_ACCESSDENIED = tibxml::platform::resultCode(0x80030005);
inline constexpr HRESULT STG_E_INVALIDPOINTER = tibxml::platform::resultCode(0x80030009);
inline constexpr HRESULT STG_E_WRITEFAULT = tibxml::platform::resultCode(0x8003001D);
inline constexpr HRESULT STG_E_READFAULT = tibxml::platform::resultCode(0x8003001E);
inline constexpr HRESULT STG_E_MEDIUMFULL = tibxml::platform::resultCode(0x80030070);
inline constexpr HRESULT STG_E_INVALIDFLAG = tibxml::platform::resultCode(0x800300FF);

/// Whether a code is a success (0 or above).
constexpr bool SUCCEEDED(HRESULT code) noexcept {
    return code >= 0;
}

/// Whether a code is a failure (below 0).
constexpr bool FAILED(HRESULT code) noexcept {
    return code < 0;
}

/// The result code that carries one of the system's own error numbers, of which the low 16 bits
/// count; 0 gives `S_OK`, and a number that is a failure code already stays what it is.
constexpr HRESULT HRESULT_FROM_WIN32(DWORD error) noexcept {
    auto const bits = static_cast<HRESULT>(error);
    return bits <= 0 ? bits : tibxml::platform::resultCode((error & 0xFFFFu) | 0x80070000u);
}
