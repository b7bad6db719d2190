// Counts what is in a document without reporting it: no text is made wide, and only the names are
// kept that the rules need.
#pragma once

#include <cstdint>

#include <reader/Input.h>
#include <reader/ReadError.h>

namespace tibxml::reader {

struct Counts {
    std::uint64_t elements = 0;
    std::uint64_t attributes = 0; // without namespace declarations
    std::uint64_t textBytes =
        0;                   // within the root, as UTF-8, CDATA sections and white space included
    std::uint32_t depth = 0; // elements inside each other
};

/// As readSax() reads: true when the whole document was read, else false with `error` filled.
/// `counts` says at any time what was there so far. Throws std::bad_alloc and what the source
/// throws.
bool count(Counts& counts, Input const& input, ReadError& error);

} // namespace tibxml::reader
