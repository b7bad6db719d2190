#pragma once

#include <string>
#include <string_view>

#include <TibXml/platform/CString.h>

namespace tibxml::tool {

// Text is UTF-8 outside of the program and wide in the library, whatever the locale says.

/// Whether bytes are well-formed UTF-8.
bool isUtf8(std::string_view bytes);

/// The wide form of UTF-8.
CString toWide(std::string_view utf8);

std::string toUtf8(std::wstring_view wide);

/// The text without line ends and other control characters, which would break a message into
/// several lines or play tricks with a terminal.
std::string oneLine(std::string text);

/// The beginning of a text, enough to recognise it in a message.
std::string excerpt(CString const& text);

} // namespace tibxml::tool
