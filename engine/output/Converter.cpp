#include "Converter.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <iconv.h>

#include <TibXml/platform/Utf.h>

namespace tibxml::output {

namespace {

constexpr std::size_t failed = static_cast<std::size_t>(-1);

iconv_t const noConverter = reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)

void close(iconv_t handle) noexcept {
    if (handle != noConverter) iconv_close(handle);
}

// The interface asks for a pointer to characters that it never changes.
char* readOnly(std::string_view text) noexcept {
    return const_cast<char*>(text.data()); // NOLINT(cppcoreguidelines-pro-type-const-cast)
}

constexpr std::size_t characterCount = 0x110000;

[[noreturn]] void refuse(std::string const& encoding, char32_t character, std::string_view where) {
    std::array<char, 16> code{};
    (void)std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(character));
    throw EncodingError{"the encoding " + encoding + " has no character " + code.data() + ", and " +
                        std::string{where} + " cannot hold a reference to it"};
}

} // namespace

Converter::Converter(std::string const& encoding)
    : handle_{iconv_open(encoding.c_str(), "UTF-8")},
      back_{iconv_open("UTF-8", encoding.c_str())} {
    if (handle_ != noConverter && back_ != noConverter) return;
    close(handle_);
    close(back_);
    throw EncodingError{"a document cannot be saved in the unknown encoding " + encoding};
}

Converter::~Converter() {
    close(handle_);
    close(back_);
}

bool Converter::canConvert(std::string_view character) {
    iconv(handle_, nullptr, nullptr, nullptr, nullptr);
    std::array<char, 32> scratch;
    char* in = readOnly(character);
    char* out = scratch.data();
    std::size_t inLeft = character.size();
    std::size_t outLeft = scratch.size();
    // Some characters are dropped in silence, and that is not having them.
    return iconv(handle_, &in, &inLeft, &out, &outLeft) == 0 && outLeft < scratch.size() &&
           isReadAs(character, {scratch.data(), scratch.size() - outLeft});
}

bool Converter::isReadAs(std::string_view character, std::string_view bytes) {
    iconv(back_, nullptr, nullptr, nullptr, nullptr);
    std::array<char, 32> scratch;
    char* in = readOnly(bytes);
    char* out = scratch.data();
    std::size_t inLeft = bytes.size();
    std::size_t outLeft = scratch.size();
    return iconv(back_, &in, &inLeft, &out, &outLeft) != failed &&
           iconv(back_, nullptr, nullptr, &out, &outLeft) != failed &&
           std::string_view{scratch.data(), scratch.size() - outLeft} == character;
}

void Converter::convert(std::string_view utf8, Sink& bytes) {
    std::array<char, 16384> buffer;
    char* in = readOnly(utf8);
    std::size_t inLeft = utf8.size();
    while (inLeft > 0) {
        char* out = buffer.data();
        std::size_t outLeft = buffer.size();
        std::size_t const result = iconv(handle_, &in, &inLeft, &out, &outLeft);
        if (result == failed && errno != E2BIG)
            throw EncodingError{"a character does not exist in the encoding to save in"};
        bytes.write({buffer.data(), buffer.size() - outLeft});
    }
}

void Converter::finish(Sink& bytes) {
    std::array<char, 64> buffer;
    char* out = buffer.data();
    std::size_t outLeft = buffer.size();
    iconv(handle_, nullptr, nullptr, &out, &outLeft);
    if (outLeft < buffer.size()) bytes.write({buffer.data(), buffer.size() - outLeft});
}

Repertoire::Repertoire(std::string_view encoding)
    : encoding_{encoding},
      converter_{encoding_},
      answers_(characterCount, Answer::unknown) {}

bool Repertoire::has(char32_t character) {
    Answer& answer = answers_[character];
    if (answer == Answer::unknown) answer = ask(character) ? Answer::yes : Answer::no;
    return answer == Answer::yes;
}

bool Repertoire::ask(char32_t character) {
    std::array<char, 4> utf8{};
    char const* const end = platform::writeUtf8(character, utf8.data());
    return converter_.canConvert({utf8.data(), static_cast<std::size_t>(end - utf8.data())});
}

void Repertoire::demand(std::string_view text, std::string_view where) {
    while (!text.empty()) {
        auto const [character, length] = platform::firstUtf8Character(text);
        if (!has(character)) refuse(encoding_, character, where);
        text.remove_prefix(length);
    }
}

} // namespace tibxml::output
