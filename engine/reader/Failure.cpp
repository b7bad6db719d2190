#include "Failure.h"

#include <array>
#include <cstdio>
#include <vector>

#include <TibXml/platform/Utf.h>

#include <reader/ReadError.h>

#include <reader/CharacterScan.h>

namespace tibxml::reader {

namespace {

std::string asNumber(char const* format, unsigned number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

platform::Utf8Character characterAt(char const* p, char const* end) noexcept {
    return platform::firstUtf8Character({p, static_cast<std::size_t>(end - p)});
}

bool isAllowed(char32_t code) noexcept {
    return code >= 0x20 ? code != 0xFFFE && code != 0xFFFF
                        : code == '\t' || code == '\n' || code == '\r';
}

} // namespace

void fail(Message message, char const* at, std::initializer_list<std::string_view> found) {
    throw ParseFailure{errorNotWellFormed + static_cast<std::uint32_t>(message),
                       sentence(message, found), at};
}

void failAtCharacter(char const* p, char const* end, Message message,
                     std::initializer_list<std::string_view> more) {
    std::string const character = shown(p, end);
    auto const [code, length] = characterAt(p, end);
    if (p != end && length == 0) fail(Message::notUtf8, p, {character});
    if (p != end && !isAllowed(code)) fail(Message::characterNotAllowed, p, {character});
    std::array<std::string_view, 3> found{character};
    std::size_t count = 1;
    for (std::string_view const text : more)
        found[count++] = text;
    fail(message, p, {found[0], found[1], found[2]});
}

char const* stopAt(char const* p, char const* end) {
    if (p >= end) return nullptr;
    if (isBeyondAscii(*p) && end - p < 4) return nullptr;
    failAtCharacter(p, end, Message::characterNotAllowed);
}

std::string shown(char const* p, char const* end) {
    if (p >= end) return "the end";
    auto const [code, length] = characterAt(p, end);
    if (length == 0) return asNumber("0x%02X", byteAt(p));
    if (code < 0x20 || code == 0x7F || !isAllowed(code)) return asNumber("U+%04X", code);
    return "'" + std::string{p, length} + "'";
}

} // namespace tibxml::reader
