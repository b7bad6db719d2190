// Where the parser's text comes from when it does not lie in memory as a whole.
#pragma once

#include <cstddef>
#include <string_view>

namespace tibxml::reader {

class Utf8Source {
public:
    // Puts at most `size` bytes of UTF-8 into `buffer`; returns how many, 0 at the end, negative
    // on failure, before which everything in front of it has been given. The parser checks that
    // the bytes are UTF-8. A byte order mark is passed on, as U+FEFF. Throws std::bad_alloc.
    virtual std::ptrdiff_t read(char* buffer, std::size_t size) = 0;

    // Why the last read has failed: a sentence for people, and its code.
    virtual std::string_view failure() const noexcept = 0;
    virtual unsigned failureCode() const noexcept = 0;

protected:
    ~Utf8Source() = default;
};

} // namespace tibxml::reader
