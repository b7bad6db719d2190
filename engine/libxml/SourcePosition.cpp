#include "SourcePosition.h"

#include <algorithm>

#include <TibXml/platform/Utf.h>

namespace tibxml::reader {

namespace {

constexpr std::size_t longestLine = 4096;

bool startsCharacter(char c) noexcept {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

} // namespace

SourcePosition positionOf(std::string_view text, std::size_t offset) noexcept {
    offset = std::min(offset, text.size());
    std::string_view const before = text.substr(0, offset);
    std::size_t const lineEnd = before.rfind('\n');
    bool const whole = lineEnd != std::string_view::npos;
    std::size_t const begin = whole ? lineEnd + 1 : 0;
    std::size_t const end = std::min(text.find_first_of("\r\n", offset), text.size());
    std::string_view const upToHere = text.substr(begin, offset - begin);
    return {text.substr(begin, std::min(end - begin, longestLine)),
            1 + std::count_if(upToHere.begin(), upToHere.end(), startsCharacter), whole};
}

std::string wellFormed(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.starts_with(mark)) text.remove_prefix(mark.size());
    std::string result;
    while (true) {
        std::size_t const valid = platform::validUtf8Prefix(text);
        result += text.substr(0, valid);
        if (valid == text.size()) return result;
        result += "\xEF\xBF\xBD";
        text.remove_prefix(valid + 1);
    }
}

} // namespace tibxml::reader
