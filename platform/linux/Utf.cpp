#include <TibXml/platform/Utf.h>

#include <algorithm>
#include <cstring>
#include <limits>

// The loops over blocks have a fixed number of steps and no exit, which is what lets the compiler
// turn them into vector code. Where wide text is not ASCII, a whole block's worth is taken one by
// one before the next is tried: text that is not ASCII seldom changes back soon.
namespace tibxml::platform {

namespace {

constexpr std::size_t blockSize = 16;
constexpr std::size_t wordSize = 8;
constexpr std::uint64_t highBits = 0x8080808080808080u;
constexpr std::uint64_t lowBits = 0x0101010101010101u;

std::uint64_t wordAt(char const* bytes) noexcept {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

template <std::size_t Count>
bool isAscii(char const* bytes) noexcept {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < Count; i += wordSize)
        bits |= wordAt(bytes + i);
    return (bits & highBits) == 0;
}

template <>
bool isAscii<wordSize / 2>(char const* bytes) noexcept {
    std::uint32_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return (word & static_cast<std::uint32_t>(highBits)) == 0;
}

template <std::size_t Count>
bool isAscii(wchar_t const* wide) noexcept {
    constexpr std::uint64_t notAscii = 0xFFFFFF80FFFFFF80u;
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < Count; i += wordSize / sizeof(wchar_t))
        bits |= wordAt(reinterpret_cast<char const*>(wide + i));
    return (bits & notAscii) == 0;
}

wchar_t unitOf(char byte) noexcept {
    return static_cast<unsigned char>(byte);
}

char unitOf(wchar_t wide) noexcept {
    return static_cast<char>(wide);
}

/// Copies the leading ASCII as far as it comes in whole steps of `Count`.
template <std::size_t Count, class From, class To>
void copyAscii(From const*& from, From const* end, To*& out) noexcept {
    while (static_cast<std::size_t>(end - from) >= Count && isAscii<Count>(from)) {
        for (std::size_t i = 0; i < Count; ++i)
            out[i] = unitOf(from[i]);
        from += Count;
        out += Count;
    }
}

template <std::size_t Count>
void widenBlock(char const* bytes, wchar_t* out) noexcept {
    for (std::size_t i = 0; i < Count; ++i)
        out[i] = unitOf(bytes[i]);
}

/// Widens a text of one to two steps by its first step and its last, which overlap: most words and
/// values are so short. False when it has another length or is not ASCII.
template <std::size_t Count>
bool widenShort(std::string_view text, wchar_t* out) noexcept {
    if (text.size() < Count || text.size() > 2 * Count) return false;
    auto const last = text.size() - Count;
    if (!isAscii<Count>(text.data()) || !isAscii<Count>(text.data() + last)) return false;
    widenBlock<Count>(text.data(), out);
    widenBlock<Count>(text.data() + last, out + last);
    return true;
}

/// Widens the last `rest` bytes of a text after a block of ASCII, as a part of the last block when
/// that is ASCII as well: a part of the block before is widened again.
bool widenEnd(std::string_view text, std::size_t rest, wchar_t* out) noexcept {
    if (rest > blockSize) return false;
    auto const* const last = text.data() + text.size() - blockSize;
    if (!isAscii<blockSize>(last)) return false;
    widenBlock<blockSize>(last, out - (blockSize - rest));
    return true;
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

/// The low bits of a continuation byte, moved to their place in the character.
char32_t tailBits(char const* byte, unsigned shift) noexcept {
    return (byteAt(byte) & 0x3Fu) << shift;
}

/// A character whose length is known and whose bytes are all there.
char32_t decode(char const* bytes, unsigned length) noexcept {
    auto const lead = byteAt(bytes);
    switch (length) {
    case 1: return lead;
    case 2: return ((lead & 0x1Fu) << 6) | tailBits(bytes + 1, 0);
    case 3: return ((lead & 0x0Fu) << 12) | tailBits(bytes + 1, 6) | tailBits(bytes + 2, 0);
    default:
        return ((lead & 0x07u) << 18) | tailBits(bytes + 1, 12) | tailBits(bytes + 2, 6) |
               tailBits(bytes + 3, 0);
    }
}

bool isSurrogate(char32_t code) noexcept {
    return code - 0xD800u < 0x800u;
}

constexpr Utf8Character illFormed{0, 0};

Utf8Character checkedPair(char const* bytes) noexcept {
    auto const code = decode(bytes, 2);
    return isContinuation(byteAt(bytes + 1)) && code >= 0x80 ? Utf8Character{code, 2} : illFormed;
}

Utf8Character checkedTriple(char const* bytes) noexcept {
    auto const code = decode(bytes, 3);
    auto const formed = isContinuation(byteAt(bytes + 1)) && isContinuation(byteAt(bytes + 2));
    return formed && code >= 0x800 && !isSurrogate(code) ? Utf8Character{code, 3} : illFormed;
}

Utf8Character checkedQuadruple(char const* bytes) noexcept {
    auto const code = decode(bytes, 4);
    auto const formed = byteAt(bytes) < 0xF8 && isContinuation(byteAt(bytes + 1)) &&
                        isContinuation(byteAt(bytes + 2)) && isContinuation(byteAt(bytes + 3));
    return formed && code >= 0x10000 && code <= 0x10FFFF ? Utf8Character{code, 4} : illFormed;
}

Utf8Character checked(char const* bytes, char const* end) noexcept {
    if (bytes == end) return illFormed;
    auto const lead = byteAt(bytes);
    if (lead < 0x80) return {lead, 1};
    auto const length = sequenceLength(lead);
    if (length == 1 || end - bytes < std::ptrdiff_t{length}) return illFormed;
    if (length == 2) return checkedPair(bytes);
    return length == 3 ? checkedTriple(bytes) : checkedQuadruple(bytes);
}

/// How many of eight bytes begin a character.
std::size_t leadBytes(std::uint64_t word) noexcept {
    auto const leads = ((~word >> 7) | (word >> 6)) & lowBits;
    return static_cast<std::size_t>((leads * lowBits) >> 56);
}

/// Widens the characters beyond ASCII at the front; ends at `end` also when the last one is cut
/// short.
char const* widenBeyondAscii(char const* bytes, char const* end, wchar_t*& out) noexcept {
    while (bytes != end && byteAt(bytes) >= 0x80) {
        auto const lead = byteAt(bytes);
        auto const length = sequenceLength(lead);
        if (end - bytes < std::ptrdiff_t{length}) return end;
        // A stray continuation byte was not counted by wideLength and must not be written either.
        if (!isContinuation(lead)) *out++ = static_cast<wchar_t>(decode(bytes, length));
        bytes += length;
    }
    return bytes;
}

// Comparisons as arithmetic, 1 or 0: as conditions they become jumps, and mispredicted ones.

std::uint32_t isAbove(std::uint32_t limit, std::uint32_t code) noexcept {
    return (limit - code) >> 31; // for codes below 2^31
}

std::uint32_t isNoCharacter(std::uint32_t code) noexcept {
    auto const surrogate = (((code ^ 0xD800u) >> 11) - 1) >> 31;
    return surrogate | isAbove(0x10FFFF, code) | (code >> 31);
}

/// Adds the size of a few wide characters.
template <std::size_t Count>
void addSize(wchar_t const* wide, Utf8Size& total) noexcept {
    std::uint32_t more = 0;
    std::uint32_t bad = 0;
    for (std::size_t i = 0; i < Count; ++i) {
        auto const code = static_cast<char32_t>(wide[i]);
        more += isAbove(0x7F, code) + isAbove(0x7FF, code) + isAbove(0xFFFF, code);
        bad |= isNoCharacter(code);
    }
    total.bytes += Count + more;
    total.valid &= bad == 0;
}

} // namespace

std::size_t asciiPrefix(std::string_view text) noexcept {
    auto const* const begin = text.data();
    std::size_t done = 0;
    while (text.size() - done >= blockSize && isAscii<blockSize>(begin + done))
        done += blockSize;
    while (done < text.size() && byteAt(begin + done) < 0x80)
        ++done;
    return done;
}

Utf8Character firstUtf8Character(std::string_view text) noexcept {
    return checked(text.data(), text.data() + text.size());
}

std::size_t validUtf8Prefix(std::string_view text) noexcept {
    auto const* bytes = text.data();
    auto const* const end = bytes + text.size();
    while (bytes != end) {
        while (end - bytes >= std::ptrdiff_t{blockSize} && isAscii<blockSize>(bytes))
            bytes += blockSize;
        auto const* const stop = bytes + std::min<std::ptrdiff_t>(end - bytes, blockSize);
        while (bytes < stop) {
            auto const length = checked(bytes, end).length;
            if (length == 0) return static_cast<std::size_t>(bytes - text.data());
            bytes += length;
        }
    }
    return text.size();
}

bool isValidWide(std::wstring_view text) noexcept {
    return utf8Size(text).valid;
}

std::size_t wideLength(std::string_view utf8) noexcept {
    auto const* bytes = utf8.data();
    auto const* const end = bytes + utf8.size();
    std::size_t length = 0;
    for (; end - bytes >= std::ptrdiff_t{wordSize}; bytes += wordSize)
        length += leadBytes(wordAt(bytes));
    for (; bytes != end; ++bytes)
        length += isContinuation(byteAt(bytes)) ? 0 : 1;
    return length;
}

wchar_t* widenUtf8(std::string_view utf8, wchar_t* out) noexcept {
    if (widenShort<wordSize>(utf8, out) || widenShort<wordSize / 2>(utf8, out))
        return out + utf8.size();
    auto const* bytes = utf8.data();
    auto const* const end = bytes + utf8.size();
    while (bytes != end) {
        auto const* const before = bytes;
        copyAscii<blockSize>(bytes, end, out);
        auto const rest = static_cast<std::size_t>(end - bytes);
        if (bytes != before && widenEnd(utf8, rest, out)) return out + rest;
        copyAscii<wordSize>(bytes, end, out);
        while (bytes != end && byteAt(bytes) < 0x80)
            *out++ = unitOf(*bytes++);
        bytes = widenBeyondAscii(bytes, end, out);
    }
    return out;
}

Utf8Size utf8Size(std::wstring_view wide) noexcept {
    auto const* from = wide.data();
    auto const* const end = from + wide.size();
    Utf8Size total{0, true};
    for (; end - from >= std::ptrdiff_t{blockSize}; from += blockSize) {
        if (isAscii<blockSize>(from)) {
            total.bytes += blockSize;
        } else {
            addSize<blockSize>(from, total);
        }
    }
    for (; from != end; ++from)
        addSize<1>(from, total);
    return total;
}

char* narrowToUtf8(std::wstring_view wide, char* out) noexcept {
    auto const* from = wide.data();
    auto const* const end = from + wide.size();
    while (from != end) {
        copyAscii<blockSize>(from, end, out);
        copyAscii<wordSize>(from, end, out);
        auto const* const stop = from + std::min<std::ptrdiff_t>(end - from, blockSize);
        for (; from != stop; ++from)
            out = writeUtf8(static_cast<char32_t>(*from), out);
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
