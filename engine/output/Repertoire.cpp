#include "Repertoire.h"

#include <array>
#include <cstddef>
#include <cstdio>

#include <TibXml/platform/Utf.h>
#include <output/Encoding.h>

namespace tibxml::output {

namespace {

constexpr std::size_t characterCount = 0x110000;

[[noreturn]] void refuse(std::string const& encoding, char32_t character, std::string_view where) {
    std::array<char, 16> code{};
    (void)std::snprintf(code.data(), code.size(), "U+%04X", static_cast<unsigned>(character));
    throw EncodingError{"the encoding " + encoding + " has no character " + code.data() + ", and " +
                        std::string{where} + " cannot hold a reference to it"};
}

} // namespace

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
