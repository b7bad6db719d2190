#include "Place.h"

#include <algorithm>

#include <TibXml/platform/Utf.h>
#include <reader/ReadError.h>

namespace tibxml::reader {

namespace {

constexpr std::size_t longestLine = 4096;
constexpr std::size_t longestStart = 3072; // of a long line, in front of the offset

bool startsCharacter(char c) noexcept {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
}

// Sums that fit into a byte for pieces of so many bytes, which the compiler turns into vector code.
template <class Condition>
long countBytes(std::string_view text, Condition condition) noexcept {
    constexpr std::size_t pieceSize = 240;
    long total = 0;
    while (!text.empty()) {
        std::string_view const piece = text.substr(0, pieceSize);
        unsigned char count = 0;
        for (char const c : piece)
            count = static_cast<unsigned char>(count + (condition(c) ? 1 : 0));
        total += count;
        text.remove_prefix(piece.size());
    }
    return total;
}

// The line ends that begin with CR and are not counted by their LF.
long countReturns(std::string_view text) noexcept {
    long count = 0;
    for (std::size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at)) {
        ++at;
        count += at != text.size() && text[at] == '\n' ? 0 : 1;
    }
    return count;
}

// Where the last line begins.
std::size_t lastLine(std::string_view text, bool hasReturns) noexcept {
    std::size_t const feed = text.rfind('\n') + 1; // npos + 1 is 0
    return hasReturns ? std::max(feed, text.rfind('\r') + 1) : feed;
}

} // namespace

Place advance(Place from, std::string_view text) noexcept {
    long const feeds = countBytes(text, [](char c) { return c == '\n'; });
    long const returns = countReturns(text);
    Place to = from;
    if (feeds + returns != 0) {
        to = {from.line + feeds + returns, 1};
        text.remove_prefix(lastLine(text, returns != 0));
    }
    to.column += countBytes(text, startsCharacter);
    return to;
}

std::string_view lineAround(std::string_view text, std::size_t offset) noexcept {
    offset = std::min(offset, text.size());
    std::size_t begin = text.substr(0, offset).find_last_of("\r\n") + 1; // npos + 1 is 0
    std::size_t end = std::min(text.find_first_of("\r\n", offset), text.size());
    if (end - begin > longestLine && offset - begin > longestStart) begin = offset - longestStart;
    while (begin != offset && !startsCharacter(text[begin]))
        ++begin;
    end = std::min(end, begin + longestLine);
    return text.substr(begin, end - begin);
}

std::string wellFormed(std::string_view text) {
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
