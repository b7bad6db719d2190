#pragma once

#include <TibXml/platform/Geometry.h>
#include <TibXml/platform/WindowsTypes.h>
#include <TibXml/tibutils/Optional.h>
#include <calls/EngineCall.h>

#include <string_view>

namespace tibxml::values {

/// The text value of a target that there is: for an element all text in it, for an attribute its
/// exact value. `_com_error` when the engine fails.
engine::EngineString textOf(WXmlNodePtr const& target);

/// Replaces the text of a target that there is; null is the empty text. `_com_error` when the
/// engine fails or there is no memory.
void setTextOf(WXmlNodePtr const& target, engine::EngineString const& text);

// How each type reads from text. Every text has a NUL after its end; nothing throws, what does not
// read as the type is absent.

TibUtils::optional<bool> parseBool(std::wstring_view text) noexcept;
TibUtils::optional<int> parseInt(std::wstring_view text) noexcept;
TibUtils::optional<__int64> parseInt64(std::wstring_view text) noexcept;
TibUtils::optional<double> parseDouble(std::wstring_view text) noexcept;
TibUtils::optional<CPoint> parsePoint(std::wstring_view text) noexcept;
TibUtils::optional<CSize> parseSize(std::wstring_view text) noexcept;
TibUtils::optional<CRect> parseRect(std::wstring_view text) noexcept;

} // namespace tibxml::values
