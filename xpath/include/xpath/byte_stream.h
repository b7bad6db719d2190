#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace TinyXPath {

// Bytes read one by one, from a private copy which ends in a zero byte. Reading never runs over the
// end: it yields the zero byte there, which is how the end of input is seen.
class byte_stream {
public:
    // Copies `utf8`. Throws std::bad_alloc.
    explicit byte_stream(std::string_view utf8);
    byte_stream(byte_stream const&) = delete;
    byte_stream& operator=(byte_stream const&) = delete;
    ~byte_stream() = default;

    // The number of bytes in the buffer, with the terminating zero.
    std::uint64_t size() const noexcept { return length; }

    // The byte being looked at; zero at the end.
    unsigned char look() const noexcept { return static_cast<unsigned char>(*current); }

    // The byte after it; zero when the byte being looked at is the last one or there is none.
    unsigned char lookAhead() const noexcept;

    // The `count` bytes just before the byte being looked at. At most as many as were passed.
    char const* taken(std::uint64_t count) const noexcept { return current - count; }

    bool more() const noexcept { return hasMore; }

    // Goes on by one byte; at the end, stays there.
    void advance() noexcept;

private:
    std::uint64_t length;
    std::unique_ptr<char[]> buffer;
    char const* current;
    char const* end;
    bool hasMore;
};

} // namespace TinyXPath
