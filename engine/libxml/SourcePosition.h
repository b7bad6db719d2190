// Where in a text something stands, for people.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tibxml::reader {

struct SourcePosition {
    std::string_view line; // without its end; the first kilobytes of a very long one
    long column;           // in characters from 1
    bool lineIsWhole;      // false when the text begins within the line
};

// `text` is UTF-8 and may be only the middle part of a longer text.
SourcePosition positionOf(std::string_view text, std::size_t offset) noexcept;

// The text with U+FFFD in place of what is no UTF-8, as a source with errors may hold, and without
// a byte order mark. Throws std::bad_alloc.
std::string wellFormed(std::string_view text);

} // namespace tibxml::reader
