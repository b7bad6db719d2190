#include "Utf16Encoder.h"

#include <TibXml/platform/Utf.h>

namespace tibxml::output {

namespace {

constexpr unsigned byteOrderMark = 0xFEFF;

} // namespace

void Utf16Encoder::write(std::string_view piece) {
    units_.clear();
    if (markMissing_) appendUnit(byteOrderMark);
    markMissing_ = false;
    while (!piece.empty()) {
        auto const [character, length] = platform::firstUtf8Character(piece);
        appendCharacter(character);
        piece.remove_prefix(length);
    }
    bytes_.write(units_);
}

void Utf16Encoder::appendCharacter(char32_t character) {
    unsigned const code = character;
    if (code < 0x10000) {
        appendUnit(code);
    } else {
        appendUnit(0xD7C0 + (code >> 10));
        appendUnit(0xDC00 | (code & 0x3FF));
    }
}

void Utf16Encoder::appendUnit(unsigned unit) {
    char const low = static_cast<char>(unit & 0xFF);
    char const high = static_cast<char>(unit >> 8);
    bool const lowFirst = order_ == Order::littleEndian;
    units_ += lowFirst ? low : high;
    units_ += lowFirst ? high : low;
}

} // namespace tibxml::output
