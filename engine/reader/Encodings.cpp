#include "Encodings.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include <tree/Text.h>

#include "Messages.h"

namespace tibxml::reader {

namespace {

using namespace std::string_view_literals;

// What the first bytes show: how the characters of a declaration are written.
struct Beginning {
    std::string_view bytes;
    Encoding encoding; // other stands for EBCDIC
    bool isMark;
};

constexpr Beginning beginnings[] = {
    {"\xEF\xBB\xBF"sv, Encoding::utf8, true},
    {"\xFF\xFE\0\0"sv, Encoding::utf32le, true}, // before UTF-16, in which that would be a NUL
    {"\0\0\xFE\xFF"sv, Encoding::utf32be, true},
    {"\xFF\xFE"sv, Encoding::utf16le, true},
    {"\xFE\xFF"sv, Encoding::utf16be, true},
    {"<\0\0\0"sv, Encoding::utf32le, false},
    {"\0\0\0<"sv, Encoding::utf32be, false},
    {"<\0?\0"sv, Encoding::utf16le, false},
    {"\0<\0?"sv, Encoding::utf16be, false},
    {"\x4C\x6F\xA7\x94"sv, Encoding::other, false},
    {""sv, Encoding::utf8, false},
};

constexpr std::size_t longestBeginning = 4;

Beginning const& beginningOf(std::string_view bytes) noexcept {
    return *std::find_if(std::begin(beginnings), std::end(beginnings),
                         [=](Beginning const& b) { return bytes.starts_with(b.bytes); });
}

// The letters, digits and signs of a declaration have the same place in every variant of EBCDIC.
char fromEbcdic(unsigned char byte) noexcept {
    struct Run {
        unsigned char first;
        std::string_view characters;
    };

    constexpr Run runs[] = {
        {0x05, "\t"},        {0x0D, "\r"},        {0x15, "\n"},        {0x25, "\n"},
        {0x40, " "},         {0x4B, ".<"},        {0x60, "-"},         {0x6D, "_>?"},
        {0x7D, "'=\""},      {0x81, "abcdefghi"}, {0x91, "jklmnopqr"}, {0xA2, "stuvwxyz"},
        {0xC1, "ABCDEFGHI"}, {0xD1, "JKLMNOPQR"}, {0xE2, "STUVWXYZ"},  {0xF0, "0123456789"},
    };
    for (Run const& run : runs) {
        std::size_t const index = std::size_t{byte} - run.first;
        if (index < run.characters.size()) return run.characters[index];
    }
    return '\0';
}

// The unit at some bytes, when it is an ASCII character; NUL stands for all others.
char asciiAt(char const* bytes, Encoding encoding) noexcept {
    std::size_t const size = unitSize(encoding);
    if (encoding == Encoding::other) return fromEbcdic(static_cast<unsigned char>(*bytes));
    bool const isBig = encoding == Encoding::utf16be || encoding == Encoding::utf32be;
    std::size_t const place = isBig ? size - 1 : 0;
    for (std::size_t i = 0; i != size; ++i)
        if (i != place && bytes[i] != 0) return '\0';
    return static_cast<unsigned char>(bytes[place]) < 0x80 ? bytes[place] : '\0';
}

// The units at the front as ASCII, at most so many and none after a '>'. A declaration is all
// ASCII: what is not is taken as it comes.
std::string asciiText(std::string_view bytes, Encoding encoding, std::size_t limit) {
    if (encoding == Encoding::utf8) {
        bytes = bytes.substr(0, limit);
        std::size_t const end = bytes.find('>');
        return std::string{end == std::string_view::npos ? bytes : bytes.substr(0, end + 1)};
    }
    std::size_t const size = unitSize(encoding);
    std::string text;
    for (; bytes.size() >= size && text.size() != limit; bytes.remove_prefix(size)) {
        text += asciiAt(bytes.data(), encoding);
        if (text.back() == '>') break;
    }
    return text;
}

constexpr std::string_view opening = "<?xml";

constexpr bool isLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool isNameCharacter(char c) noexcept {
    return isLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-';
}

void skipBlanks(std::string_view& text) noexcept {
    while (!text.empty() && tree::isBlank(text.front()))
        text.remove_prefix(1);
}

// The value in quotes at the front of a text, which it leaves; empty when there is none.
std::string_view takeValue(std::string_view& text) noexcept {
    skipBlanks(text);
    if (!text.starts_with('=')) return {};
    text.remove_prefix(1);
    skipBlanks(text);
    if (!text.starts_with('"') && !text.starts_with('\'')) return {};
    std::size_t const end = text.find(text.front(), 1);
    if (end == std::string_view::npos) return {};
    std::string_view const value = text.substr(1, end - 1);
    text.remove_prefix(end + 1);
    return value;
}

// The declaration at the front up to its end; empty when there is none.
std::string declarationIn(std::string_view bytes, Encoding encoding) {
    std::string text = asciiText(bytes, encoding, opening.size() + 1);
    if (!text.starts_with(opening) || !tree::isBlank(text.back())) return {};
    text = asciiText(bytes, encoding, bytes.size());
    return text.ends_with("?>") ? text : std::string{};
}

// The name in a declaration; empty when there is none or the declaration is wrong before it, which
// is for the parser to say.
std::string_view namedEncoding(std::string_view declaration) noexcept {
    declaration.remove_prefix(std::min(declaration.size(), opening.size()));
    while (true) {
        skipBlanks(declaration);
        std::size_t const size = declaration.find_first_of("= \t\r\n");
        if (size == std::string_view::npos) return {};
        std::string_view const key = declaration.substr(0, size);
        declaration.remove_prefix(size);
        std::string_view const value = takeValue(declaration);
        if (key == "encoding" || value.empty()) return value;
    }
}

bool isEncodingName(std::string_view name) noexcept {
    return !name.empty() && isLetter(name.front()) && std::ranges::all_of(name, isNameCharacter);
}

// The encodings with code of their own, by the names that they go by. Where a name leaves the byte
// order open it is that of the document.
struct KnownName {
    std::string_view name;
    Encoding little;
    Encoding big;
};

constexpr KnownName knownNames[] = {
    {"UTF-8", Encoding::utf8, Encoding::utf8},
    {"UTF8", Encoding::utf8, Encoding::utf8},
    {"UTF-16", Encoding::utf16le, Encoding::utf16be},
    {"UTF16", Encoding::utf16le, Encoding::utf16be},
    {"UTF-16LE", Encoding::utf16le, Encoding::utf16le},
    {"UTF-16BE", Encoding::utf16be, Encoding::utf16be},
    {"UCS-2", Encoding::utf16le, Encoding::utf16be},
    {"ISO-10646-UCS-2", Encoding::utf16le, Encoding::utf16be},
    {"UTF-32", Encoding::utf32le, Encoding::utf32be},
    {"UTF-32LE", Encoding::utf32le, Encoding::utf32le},
    {"UTF-32BE", Encoding::utf32be, Encoding::utf32be},
    {"UCS-4", Encoding::utf32le, Encoding::utf32be},
    {"ISO-10646-UCS-4", Encoding::utf32le, Encoding::utf32be},
    {"ISO-8859-1", Encoding::latin1, Encoding::latin1},
    {"ISO8859-1", Encoding::latin1, Encoding::latin1},
    {"ISO-LATIN-1", Encoding::latin1, Encoding::latin1},
    {"US-ASCII", Encoding::ascii, Encoding::ascii},
    {"ASCII", Encoding::ascii, Encoding::ascii},
};

constexpr char upper(char c) noexcept {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

Encoding encodingNamed(std::string_view name, Encoding shown) noexcept {
    auto const isName = [&](KnownName const& known) {
        return std::ranges::equal(known.name, name, {}, {}, upper);
    };
    auto const* const known = std::find_if(std::begin(knownNames), std::end(knownNames), isName);
    if (known == std::end(knownNames)) return Encoding::other;
    bool const isBig = shown == Encoding::utf16be || shown == Encoding::utf32be;
    return isBig ? known->big : known->little;
}

std::string_view nameOf(Encoding encoding) noexcept {
    switch (encoding) {
    case Encoding::utf16le: return "UTF-16LE";
    case Encoding::utf16be: return "UTF-16BE";
    case Encoding::utf32le: return "UTF-32LE";
    case Encoding::utf32be: return "UTF-32BE";
    case Encoding::other: return "EBCDIC";
    default: return "UTF-8";
    }
}

// Whether a document may be named so whose first bytes show an encoding.
bool agrees(Encoding named, Beginning const& shown) noexcept {
    if (unitSize(shown.encoding) == 1 && shown.encoding == Encoding::utf8)
        return unitSize(named) == 1;
    // What was written anew in another encoding often says UTF-8 still: the mark is right.
    return named == shown.encoding || (shown.isMark && named == Encoding::utf8);
}

// Whether the declaration reads as it does in an encoding of the system's.
bool spells(Conversion& conversion, std::string_view bytes, Encoding shown) {
    std::array<char, 64> text;
    std::size_t const size = opening.size() * unitSize(shown);
    Converted const result = conversion.convert(bytes.substr(0, size), text.data(), text.size());
    char* const end = text.data() + result.given;
    std::size_t const held = conversion.finish(end, text.size() - result.given);
    return std::string_view{text.data(), result.given + held} == opening;
}

// The encoding as the first bytes alone show it.
FoundEncoding shownBy(Beginning const& beginning) {
    FoundEncoding found;
    found.encoding = beginning.encoding;
    found.name = nameOf(beginning.encoding);
    found.conversion = beginning.encoding == Encoding::other ? conversionFrom("EBCDIC-US")
                                                             : conversionFrom(beginning.encoding);
    return found;
}

FoundEncoding refused(Beginning const& beginning, Message message, std::string_view name,
                      std::size_t declarationSize) {
    FoundEncoding found = shownBy(beginning);
    found.refusal = message;
    found.reason = sentence(message, {name, found.name});
    found.declarationSize = declarationSize;
    return found;
}

} // namespace

bool needsMoreToFind(std::string_view bytes, std::size_t seen) {
    if (bytes.size() < longestBeginning) return true;
    Beginning const& beginning = beginningOf(bytes);
    if (beginning.isMark) bytes.remove_prefix(beginning.bytes.size());
    std::string const first = asciiText(bytes, beginning.encoding, opening.size());
    if (first != opening) return opening.starts_with(first);
    char const sign = beginning.encoding == Encoding::other ? '\x6E' : '>';
    std::size_t const end = bytes.find(sign, seen - std::min(seen, longestBeginning));
    std::size_t const size = unitSize(beginning.encoding);
    return end == std::string_view::npos || bytes.size() < (end / size + 1) * size;
}

FoundEncoding findEncoding(std::string_view bytes) {
    Beginning const& beginning = beginningOf(bytes);
    std::size_t const mark = beginning.isMark ? beginning.bytes.size() : 0;
    if (bytes.size() >= maximumDeclaration && needsMoreToFind(bytes, 0))
        return refused(beginning, Message::longDeclaration, {}, bytes.size());
    std::string const declaration = declarationIn(bytes.substr(mark), beginning.encoding);
    std::string_view const name = namedEncoding(declaration);
    if (!isEncodingName(name)) return shownBy(beginning);

    std::size_t const size = mark + declaration.size() * unitSize(beginning.encoding);
    FoundEncoding found;
    found.name = name;
    found.encoding = encodingNamed(name, beginning.encoding);
    bool const isOther = found.encoding == Encoding::other;
    found.conversion = isOther ? conversionFrom(found.name) : conversionFrom(found.encoding);
    if (isOther && !found.conversion)
        return refused(beginning, Message::unknownEncoding, name, size);
    bool const fits = isOther ? spells(*found.conversion, bytes.substr(mark), beginning.encoding)
                              : agrees(found.encoding, beginning);
    if (!fits) return refused(beginning, Message::wrongEncoding, name, size);
    return beginning.isMark ? shownBy(beginning) : std::move(found);
}

} // namespace tibxml::reader
