// Why a document could not be read.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tibxml::reader {

// Lines and columns count from 1, columns in characters; the offset counts bytes of UTF-8. All zero
// and empty when all went well.
struct ReadError {
    std::uint32_t code = 0;
    std::string reason;
    std::string sourceLine;
    long line = 0;
    long column = 0;
    long offset = 0;
};

// A document type declaration, even an empty one.
inline constexpr std::uint32_t errorDocumentType = 0xC00CE584;
// More than maximumDepth elements inside each other.
inline constexpr std::uint32_t errorTooDeep = 0xC00CE586;
// The source failed.
inline constexpr std::uint32_t errorSource = 0xC00CE587;
// Any other error of well-formedness has this code with the parser's own number added.
inline constexpr std::uint32_t errorNotWellFormed = 0xC00CE000;

inline constexpr int maximumDepth = 256;

// The text with U+FFFD in place of what is not UTF-8, as it may stand in a document with errors.
// Throws std::bad_alloc.
std::string wellFormed(std::string_view text);

} // namespace tibxml::reader
