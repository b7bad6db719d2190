#pragma once

#include <cstdint>

// Numbers, result codes, identifiers and the kinds of variants.

// The number types have the sizes that they have on Windows, whatever the size of the C++ types
// here: `LONG` and `ULONG` stay 32-bit although `long` has 64 bits on 64-bit Linux. The
// wide character is the one exception: it is this platform's own `wchar_t`, UTF-32, so that wide
// literals and the C library's wide functions work for callers.

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using SHORT = std::int16_t;
using USHORT = std::uint16_t;
using INT = std::int32_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;

/// True is any value but 0.
using BOOL = std::int32_t;

/// The 64-bit integer that is a keyword elsewhere. A macro, because an alias takes no `unsigned`.
#define __int64 long long // NOLINT(bugprone-reserved-identifier): the platform's own name

/// The truth value inside variants; only the two constants below are proper values.
using VARIANT_BOOL = std::int16_t;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

using WCHAR = wchar_t;
using OLECHAR = wchar_t;

/// An opaque handle of a loaded module.
using HMODULE = void*;

/// A result code: negative for a failure, 0 or positive for a success.
using HRESULT = std::int32_t;

/// A 64-bit offset with a sign, and one without.
union LARGE_INTEGER {
    LONGLONG QuadPart;
};

union ULARGE_INTEGER {
    ULONGLONG QuadPart;
};

static_assert(sizeof(BYTE) == 1 && sizeof(WORD) == 2 && sizeof(DWORD) == 4);
static_assert(sizeof(SHORT) == 2 && sizeof(INT) == 4 && sizeof(LONG) == 4 && sizeof(ULONG) == 4);
static_assert(sizeof(LONGLONG) == 8 && sizeof(__int64) == 8);
static_assert(sizeof(BOOL) == 4 && sizeof(VARIANT_BOOL) == 2 && sizeof(HRESULT) == 4);
static_assert(sizeof(LARGE_INTEGER) == 8 && sizeof(ULARGE_INTEGER) == 8);
static_assert(sizeof(wchar_t) == 4, "text conversions take the wide character as UTF-32");

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

/// The 128-bit name of an interface or a class. Two are equal when all their fields are. An
/// aggregate, so that identifiers are compile-time constants:
/// `inline constexpr IID IID_Thing{0x0000000c, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};`
struct GUID {
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];

    friend constexpr bool operator==(GUID const& left, GUID const& right) = default;
};

static_assert(sizeof(GUID) == 16, "identifiers are compared and stored as 16 bytes");

using IID = GUID;
using CLSID = GUID;
using REFGUID = GUID const&;
using REFIID = IID const&;
using REFCLSID = CLSID const&;

/// The identifier that names nothing.
inline constexpr GUID GUID_NULL{};
inline constexpr IID IID_NULL{};

/// What a variant holds or an array is made of: one of the kinds, possibly with `VT_ARRAY` or
/// `VT_BYREF` added.
using VARTYPE = USHORT;

inline constexpr VARTYPE VT_EMPTY = 0;
inline constexpr VARTYPE VT_NULL = 1;
inline constexpr VARTYPE VT_I2 = 2;
inline constexpr VARTYPE VT_I4 = 3;
inline constexpr VARTYPE VT_R8 = 5;
inline constexpr VARTYPE VT_BSTR = 8;
inline constexpr VARTYPE VT_DISPATCH = 9;
inline constexpr VARTYPE VT_ERROR = 10;
inline constexpr VARTYPE VT_BOOL = 11;
inline constexpr VARTYPE VT_VARIANT = 12;
inline constexpr VARTYPE VT_UNKNOWN = 13;
inline constexpr VARTYPE VT_UI1 = 17;
inline constexpr VARTYPE VT_INT = 22;
inline constexpr VARTYPE VT_ARRAY = 0x2000; ///< an array of the kind
inline constexpr VARTYPE VT_BYREF = 0x4000; ///< a pointer to another owner's value of the kind
