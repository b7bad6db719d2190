// Documents decoded in the ways in which their bytes come.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <reader/Decoder.h>

namespace tibxml::reader::test {

struct Decoded {
    std::string text; // up to the failure, if there was one
    std::string failure;
    unsigned code = 0;
};

// All that a source gives, asked for in pieces of a size.
Decoded drain(Utf8Source& source, std::size_t size = 65536);

// The text of a document given in pieces of `step` bytes and asked for in pieces of `size`.
Decoded decode(std::string_view bytes, std::size_t step = 65536, std::size_t size = 65536);

// UTF-8 text as bytes of another encoding, by the system's converter, which must have it all.
std::string encoded(std::string_view utf8, char const* encoding);

} // namespace tibxml::reader::test
