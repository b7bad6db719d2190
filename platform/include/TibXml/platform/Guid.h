#pragma once

#include <TibXml/platform/WindowsTypes.h>

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
