// Character references and the five entities that XML has without document types.
#pragma once

#include <cstring>

namespace tibxml::reader {

// Reads a reference that is none of the frequent ones, for readReference().
char const* readAnyReference(char const* p, char const* end, char32_t& character);

// Reads the reference at p, which is at its '&': the character that it means, and the place after
// its ';', or null when the text ends before. A block may be loaded from p. Throws ParseFailure.
inline char const* readReference(char const* p, char const* end, char32_t& character) {
    if (end - p < 5) return readAnyReference(p, end, character);
    if (std::memcmp(p, "&lt;", 4) == 0) return character = '<', p + 4;
    if (std::memcmp(p, "&gt;", 4) == 0) return character = '>', p + 4;
    if (std::memcmp(p, "&amp;", 5) == 0) return character = '&', p + 5;
    return readAnyReference(p, end, character);
}

} // namespace tibxml::reader
