#pragma once

#include <TibXml/platform/Geometry.h>
#include <TibXml/platform/WindowsTypes.h>
#include <TibXml/tibutils/Optional.h>

#include <string_view>

// How each type reads from text. Every text has a NUL after its end; nothing throws, what does not
// read as the type is absent.
namespace tibxml::values {

TibUtils::optional<bool> parseBool(std::wstring_view text) noexcept;
TibUtils::optional<int> parseInt(std::wstring_view text) noexcept;
TibUtils::optional<__int64> parseInt64(std::wstring_view text) noexcept;
TibUtils::optional<double> parseDouble(std::wstring_view text) noexcept;
TibUtils::optional<CPoint> parsePoint(std::wstring_view text) noexcept;
TibUtils::optional<CSize> parseSize(std::wstring_view text) noexcept;
TibUtils::optional<CRect> parseRect(std::wstring_view text) noexcept;

} // namespace tibxml::values
