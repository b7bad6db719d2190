#include <TibXml/platform/Utf.h>

#include <array>
#include <cstring>
#include <limits>

// The loops over blocks have a fixed number of steps and no exit, which is what lets the compiler
// turn them into vector code.
namespace tibxml::platform {

namespace {

constexpr std::size_t blockSize = 16;
constexpr std::uint64_t highBits = 0x8080808080808080u;
constexpr std::uint64_t lowBits = 0x0101010101010101u;

std::uint64_t wordAt(char const* bytes) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

bool isAsciiBlock(char const* bytes) noexcept {
    return ((wordAt(bytes) | wordAt(bytes + 8)) & highBits) == 0;
}

bool isAsciiBlock(wchar_t const* wide) noexcept {
    std::uint32_t bits = 0;
    for (std::size_t i = 0; i < blockSize; ++i)
        bits |= static_cast<std::uint32_t>(wide[i]);
    return bits < 0x80;
}

void widenBlock(char const* bytes, wchar_t* out) noexcept {
    for (std::size_t i = 0; i < blockSize; ++i)
        out[i] = static_cast<unsigned char>(bytes[i]);
}

void narrowBlock(wchar_t const* wide, char* out) noexcept {
    for (std::size_t i = 0; i < blockSize; ++i)
        out[i] = static_cast<char>(wide[i]);
}

unsigned byteAt(char const* bytes) noexcept {
    return static_cast<unsigned char>(*bytes);
}

bool isContinuation(unsigned byte) noexcept {
    return (byte & 0xC0u) == 0x80;
}

unsigned sequenceLength(unsigned lead) noexcept {
    if (lead < 0xC0) return 1;
    if (lead < 0xE0) return 2;
    return lead < 0xF0 ? 3 : 4;
}

/// A character of two bytes or more whose form is not in doubt.
char32_t decodeSequence(char const* bytes, unsigned length) noexcept {
    char32_t code = byteAt(bytes) & (0x7Fu >> length);
    for (unsigned i = 1; i < length; ++i)
        code = (code << 6) | (byteAt(bytes + i) & 0x3Fu);
    return code;
}

bool isSurrogate(std::uint32_t code) noexcept {
    return code - 0xD800u < 0x800u;
}

/// The bytes that follow in the block of eight bytes which are not continuation bytes.
std::size_t leadBytes(std::uint64_t word) noexcept {
    auto const leads = ((~word >> 7) | (word >> 6)) & lowBits;
    return static_cast<std::size_t>((leads * lowBits) >> 56);
}

} // namespace

std::size_t asciiPrefix(std::string_view text) noexcept {
    std::size_t done = 0;
    while (text.size() - done >= blockSize && isAsciiBlock(text.data() + done))
        done += blockSize;
    while (done < text.size() && byteAt(text.data() + done) < 0x80)
        ++done;
    return done;
}

Utf8Character firstUtf8Character(std::string_view text) noexcept {
    constexpr Utf8Character none{0, 0};
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    if (text.empty()) return none;
    auto const lead = byteAt(text.data());
    if (lead < 0x80) return {lead, 1};
    auto const length = sequenceLength(lead);
    if (length == 1 || lead > 0xF4 || text.size() < length) return none;
    for (unsigned i = 1; i < length; ++i)
        if (!isContinuation(byteAt(text.data() + i))) return none;
    auto const code = decodeSequence(text.data(), length);
    if (code < least[length] || isSurrogate(code) || code > 0x10FFFF) return none;
    return {code, length};
}

std::size_t validUtf8Prefix(std::string_view text) noexcept {
    auto rest = text;
    for (;;) {
        rest.remove_prefix(asciiPrefix(rest));
        auto character = firstUtf8Character(rest);
        if (character.length == 0) return text.size() - rest.size();
        // Text that is not ASCII seldom changes back after one character.
        while (character.length > 1) {
            rest.remove_prefix(character.length);
            character = firstUtf8Character(rest);
        }
    }
}

bool isValidWide(std::wstring_view text) noexcept {
    return utf8Size(text).valid;
}

std::size_t wideLength(std::string_view utf8) noexcept {
    auto const* bytes = utf8.data();
    auto const* const end = bytes + utf8.size();
    std::size_t length = 0;
    for (; end - bytes >= 8; bytes += 8)
        length += leadBytes(wordAt(bytes));
    for (; bytes != end; ++bytes)
        length += isContinuation(byteAt(bytes)) ? 0 : 1;
    return length;
}

wchar_t* widenUtf8(std::string_view utf8, wchar_t* out) noexcept {
    auto const* bytes = utf8.data();
    auto const* const end = bytes + utf8.size();
    while (bytes != end) {
        for (; end - bytes >= std::ptrdiff_t{blockSize} && isAsciiBlock(bytes);
             bytes += blockSize) {
            widenBlock(bytes, out);
            out += blockSize;
        }
        if (bytes == end) break;
        auto const lead = byteAt(bytes);
        auto const length = sequenceLength(lead);
        if (end - bytes < std::ptrdiff_t{length}) break;
        // A stray continuation byte was not counted by wideLength and must not be written either.
        if (!isContinuation(lead))
            *out++ = static_cast<wchar_t>(length == 1 ? lead : decodeSequence(bytes, length));
        bytes += length;
    }
    return out;
}

Utf8Size utf8Size(std::wstring_view wide) noexcept {
    std::size_t bytes = 0;
    bool bad = false;
    for (auto const character : wide) {
        auto const code = static_cast<char32_t>(character);
        bytes +=
            1u + (code >= 0x80 ? 1u : 0u) + (code >= 0x800 ? 1u : 0u) + (code >= 0x10000 ? 1u : 0u);
        bad |= isSurrogate(code) || code > 0x10FFFF;
    }
    return {bytes, !bad};
}

char* writeUtf8(char32_t code, char* out) noexcept {
    auto const tail = [code](unsigned shift) {
        return static_cast<char>(0x80u | ((code >> shift) & 0x3Fu));
    };
    if (code < 0x80) {
        *out++ = static_cast<char>(code);
        return out;
    }
    if (code < 0x800) {
        *out++ = static_cast<char>(0xC0u | (code >> 6));
    } else if (code < 0x10000) {
        *out++ = static_cast<char>(0xE0u | (code >> 12));
        *out++ = tail(6);
    } else {
        *out++ = static_cast<char>(0xF0u | (code >> 18));
        *out++ = tail(12);
        *out++ = tail(6);
    }
    *out++ = tail(0);
    return out;
}

char* narrowToUtf8(std::wstring_view wide, char* out) noexcept {
    auto const* from = wide.data();
    auto const* const end = from + wide.size();
    while (from != end) {
        for (; end - from >= std::ptrdiff_t{blockSize} && isAsciiBlock(from); from += blockSize) {
            narrowBlock(from, out);
            out += blockSize;
        }
        if (from == end) break;
        out = writeUtf8(static_cast<char32_t>(*from++), out);
    }
    return out;
}

bool appendUtf8(std::string& target, std::wstring_view wide) {
    auto const size = utf8Size(wide);
    if (!size.valid) return false;
    auto const before = target.size();
    target.resize(before + size.bytes);
    narrowToUtf8(wide, target.data() + before);
    return true;
}

bool appendWide(std::wstring& target, std::string_view utf8) {
    if (!isValidUtf8(utf8)) return false;
    auto const before = target.size();
    target.resize(before + wideLength(utf8));
    widenUtf8(utf8, target.data() + before);
    return true;
}

BSTR bstrFromUtf8(std::string_view utf8) noexcept {
    auto const length = wideLength(utf8);
    if (length > std::numeric_limits<UINT>::max()) return nullptr;
    auto* const text = SysAllocStringLen(nullptr, static_cast<UINT>(length));
    if (text != nullptr) widenUtf8(utf8, text);
    return text;
}

} // namespace tibxml::platform
