#pragma once

#include <TibXml/platform/WindowsTypes.h>

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
inline constexpr VARTYPE VT_BYREF = 0x4000; ///< a pointer to somebody else's value of the kind
