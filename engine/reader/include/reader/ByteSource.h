// Where the bytes of a document come from.
#pragma once

#include <cstddef>

namespace tibxml::reader {

class ByteSource {
public:
    // Puts at most `size` bytes into `buffer`; returns how many, 0 at the end, negative on failure.
    virtual std::ptrdiff_t read(char* buffer, std::size_t size) noexcept = 0;

protected:
    ~ByteSource() = default;
};

} // namespace tibxml::reader
