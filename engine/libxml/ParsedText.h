// What the parser hands over, as the library's own types.
#pragma once

#include <cstddef>
#include <string_view>

namespace tibxml::reader {

// What the parser says about one attribute: five pointers in a row.
struct ParsedAttribute {
    unsigned char const* local;
    unsigned char const* prefix;
    unsigned char const* uri;
    unsigned char const* value;
    unsigned char const* valueEnd;
};

// What it says about one namespace declaration.
struct ParsedDeclaration {
    unsigned char const* prefix; // null for the default namespace
    unsigned char const* uri;
};

static_assert(sizeof(ParsedAttribute) == 5 * sizeof(unsigned char const*));
static_assert(sizeof(ParsedDeclaration) == 2 * sizeof(unsigned char const*));

// Null counts as empty.
inline std::string_view view(unsigned char const* text) noexcept {
    return text != nullptr ? std::string_view{reinterpret_cast<char const*>(text)}
                           : std::string_view{};
}

inline std::string_view view(unsigned char const* text, int length) noexcept {
    return {reinterpret_cast<char const*>(text), static_cast<std::size_t>(length)};
}

inline std::string_view valueOf(ParsedAttribute const& attribute) noexcept {
    return {reinterpret_cast<char const*>(attribute.value),
            static_cast<std::size_t>(attribute.valueEnd - attribute.value)};
}

} // namespace tibxml::reader
