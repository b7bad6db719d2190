// From the bytes of one encoding to UTF-8, piece by piece.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tibxml::reader {

enum class Encoding { utf8, utf16le, utf16be, utf32le, utf32be, latin1, ascii, other };

// The bytes that one unit takes; characters take one or more.
constexpr std::size_t unitSize(Encoding encoding) noexcept {
    if (encoding == Encoding::utf16le || encoding == Encoding::utf16be) return 2;
    return encoding == Encoding::utf32le || encoding == Encoding::utf32be ? 4 : 1;
}

// How far a conversion came.
struct Converted {
    enum class Stop {
        needsInput, // nothing is left, or only the start of a character
        needsRoom,
        invalid, // the next bytes are not a character
    };

    std::size_t taken; // bytes of input
    std::size_t given; // bytes of UTF-8
    Stop stop;
};

class Conversion {
public:
    Conversion() = default;
    Conversion(Conversion const&) = delete;
    Conversion& operator=(Conversion const&) = delete;
    virtual ~Conversion() = default;

    // Converts whole characters from the front of `bytes`; 32 bytes are room enough for whatever
    // one of them becomes. What was not taken has to be given again, with more after it.
    virtual Converted convert(std::string_view bytes, char* out, std::size_t room) noexcept = 0;

    // What was held back until the end of the input; returns how many bytes.
    virtual std::size_t finish(char*, std::size_t) noexcept { return 0; }
};

// For an encoding that is neither UTF-8, which needs none, nor another. Throws std::bad_alloc.
std::unique_ptr<Conversion> conversionFrom(Encoding encoding);

// By the system's converter; null for an encoding that it does not know. Throws std::bad_alloc.
std::unique_ptr<Conversion> conversionFrom(std::string const& name);

// The wide text as UTF-8, by the same rules.
Converted convertWide(std::wstring_view text, char* out, std::size_t room) noexcept;

} // namespace tibxml::reader
