// Where in a document something stands, for people.
#pragma once

#include <cstddef>
#include <string_view>

namespace tibxml::reader {

// Counted from 1, columns in characters. CR, LF and CR LF end a line.
struct Place {
    long line = 1;
    long column = 1;
};

// Where one comes to from a place over a text, which does not begin between CR and LF.
Place advance(Place from, std::string_view text) noexcept;

// The line around an offset, without its end; the kilobytes around the offset when it is very long.
std::string_view lineAround(std::string_view text, std::size_t offset) noexcept;

} // namespace tibxml::reader
