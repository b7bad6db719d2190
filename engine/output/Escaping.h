// Which characters cannot stand as they are, and what stands for them.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tibxml::output {

enum class Place { text, attributeValue };

/// The reference to write for a byte in a place; empty when the byte can stand as it is. A carriage
/// return would be read back as a line feed, tabs and line feeds in a value as blanks.
constexpr std::string_view referenceFor(char c, Place place) noexcept {
    bool const inValue = place == Place::attributeValue;
    switch (c) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '\r': return "&#13;";
    case '"': return inValue ? "&quot;" : "";
    case '\t': return inValue ? "&#9;" : "";
    case '\n': return inValue ? "&#10;" : "";
    default: return "";
    }
}

namespace escaping {

constexpr std::uint64_t everyByte(unsigned char value) noexcept {
    return 0x0101010101010101U * value;
}

/// Not zero exactly when one of the eight bytes is `value`.
constexpr std::uint64_t anyIs(std::uint64_t bytes, unsigned char value) noexcept {
    std::uint64_t const zeros = bytes ^ everyByte(value);
    return (zeros - everyByte(1)) & ~zeros & everyByte(0x80);
}

/// Not zero exactly when one of the eight bytes is below `limit`, which is at most 128.
constexpr std::uint64_t anyBelow(std::uint64_t bytes, unsigned char limit) noexcept {
    return (bytes - everyByte(limit)) & ~bytes & everyByte(0x80);
}

/// Not zero exactly when a byte among the eight needs a reference. '<' and '>' differ in one bit,
/// and so do '"' and '&'; of the control characters a value can only hold those that need one.
template <Place place>
constexpr std::uint64_t anySpecial(std::uint64_t bytes) noexcept {
    std::uint64_t const angles = anyIs(bytes & ~everyByte('<' ^ '>'), '<' & '>');
    if constexpr (place == Place::attributeValue)
        return angles | anyIs(bytes & ~everyByte('"' ^ '&'), '"' & '&') | anyBelow(bytes, ' ');
    return angles | anyIs(bytes, '&') | anyIs(bytes, '\r');
}

inline std::uint64_t load(char const* bytes) noexcept {
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

template <Place place>
bool isSpecial(char c) noexcept {
    return !referenceFor(c, place).empty();
}

template <Place place>
std::size_t firstSpecialBytewise(std::string_view text) noexcept {
    std::size_t at = 0;
    while (at < text.size() && !isSpecial<place>(text[at]))
        ++at;
    return at;
}

} // namespace escaping

/// How many characters at the front of a text can be copied as they are.
template <Place place>
std::size_t plainPrefix(std::string_view text) noexcept {
    std::size_t at = 0;
    while (text.size() - at >= 8 && escaping::anySpecial<place>(escaping::load(&text[at])) == 0)
        at += 8;
    return at + escaping::firstSpecialBytewise<place>(text.substr(at));
}

/// Whether the first `length` of 16 bytes that may all be read can be copied as they are.
template <Place place>
bool isPlain16(char const* bytes, std::size_t length) noexcept {
    static_assert(std::endian::native == std::endian::little,
                  "the mask below keeps the first bytes of a word");
    // Bytes after the text are made blanks, which are never special.
    auto const keep = [length](std::size_t from) -> std::uint64_t {
        if (length >= from + 8) return ~std::uint64_t{0};
        return length <= from ? 0 : ~std::uint64_t{0} >> (8 * (from + 8 - length));
    };
    auto const special = [&](std::size_t from) {
        std::uint64_t const mask = keep(from);
        std::uint64_t const blanks = escaping::everyByte(' ');
        return escaping::anySpecial<place>((escaping::load(bytes + from) & mask) |
                                           (blanks & ~mask));
    };
    return (special(0) | special(8)) == 0;
}

} // namespace tibxml::output
