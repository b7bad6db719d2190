#pragma once

#include <TibXml/platform/Export.h>
#include <TibXml/platform/WindowsTypes.h>

/// A wide string that passes between the engine and its callers: it points to the first of its
/// characters, the number of bytes that they take stands in the four bytes before them, and a NUL
/// follows them. It may hold NULs. A null pointer is a proper, empty string. Whoever holds one owns
/// it and frees it with `SysFreeString`; a string may be freed on another thread than made it.
using BSTR = OLECHAR*;

/// A copy of a string that ends with its first NUL. Null for null, and when memory is exhausted.
TIBXML_API BSTR SysAllocString(OLECHAR const* text) noexcept;

/// A string of `length` characters, copied from `text`, NULs and all; when `text` is null the
/// characters are left for the caller to write, and only the closing NUL is there. Null when memory
/// is exhausted or the length in bytes does not fit its prefix.
TIBXML_API BSTR SysAllocStringLen(OLECHAR const* text, UINT length) noexcept;

/// Frees a string; null is fine.
TIBXML_API void SysFreeString(BSTR text) noexcept;

/// The number of characters, 0 for null.
TIBXML_API UINT SysStringLen(BSTR text) noexcept;

/// The number of bytes that the characters take, 0 for null.
TIBXML_API UINT SysStringByteLen(BSTR text) noexcept;
