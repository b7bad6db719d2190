#pragma once

#include <cstdint>

// The platform's number types, with the sizes that they have on Windows whatever the size of the
// C++ types here: `LONG` and `ULONG` stay 32-bit although `long` has 64 bits on 64-bit Linux. The
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
