// Where a document comes from: bytes or text, and how the encoding of bytes is determined.
#pragma once

#include <cstddef>
#include <string_view>
#include <variant>

namespace tibxml::reader {

/// Bytes that come piece by piece.
class ByteSource {
public:
    /// Puts at most `size` bytes into `buffer`; returns how many, 0 at the end, negative on
    /// failure.
    virtual std::ptrdiff_t read(char* buffer, std::size_t size) noexcept = 0;

protected:
    ~ByteSource() = default;
};

/// detect: the byte order mark, else the declaration, else UTF-8. alwaysUtf8: whatever is declared.
enum class EncodingRule { detect, alwaysUtf8 };

/// What is read; it must outlive the reading. Wide text is what it is, whatever encoding it
/// declares. What is not Unicode in it is an error with the code errorSource.
struct Input {
    Input(ByteSource& source) noexcept : from{&source} {}

    Input(std::string_view bytes, EncodingRule rule = EncodingRule::detect) noexcept
        : from{bytes},
          encoding{rule} {}

    Input(std::wstring_view text) noexcept : from{text} {}

    std::variant<ByteSource*, std::string_view, std::wstring_view> from;
    EncodingRule encoding = EncodingRule::detect; // of bytes

    // How many bytes of a source are looked at at a time, 0 for as many as usual. The result does
    // not depend on it.
    std::size_t windowSize = 0;
};

} // namespace tibxml::reader
