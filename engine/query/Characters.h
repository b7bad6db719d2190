// UTF-8 text as a sequence of characters. The text must be well formed.
#pragma once

#include <cstddef>
#include <string_view>

namespace tibxml::query {

constexpr bool startsCharacter(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

inline std::size_t countCharacters(std::string_view text) noexcept {
    std::size_t count = 0;
    for (char byte : text)
        count += startsCharacter(byte) ? 1 : 0;
    return count;
}

// The bytes of the first character; the text is not empty.
inline std::string_view firstCharacter(std::string_view text) noexcept {
    std::size_t length = 1;
    while (length < text.size() && !startsCharacter(text[length]))
        ++length;
    return text.substr(0, length);
}

} // namespace tibxml::query
