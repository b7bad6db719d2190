// Finds where texts, values and names end, block by block, and checks on the way that everything
// is UTF-8 and allowed in XML.
//
// All functions look at text from `p` up to `end` and return the first place that needs a closer
// look, or `end`. They may load, but never count, up to a block of bytes after `end`.
#pragma once

#include <bit>

#include <reader/Simd.h>

namespace tibxml::reader {

inline unsigned byteAt(char const* p) noexcept {
    return static_cast<unsigned char>(*p);
}

inline bool isBeyondAscii(char c) noexcept {
    return static_cast<signed char>(c) < 0;
}

inline bool isContinuation(unsigned byte) noexcept {
    return (byte & 0xC0U) == 0x80U;
}

// The number of bytes of the character that begins at p, which is beyond ASCII; 0 when these are
// not UTF-8 or mean a character that XML does not allow. May load three bytes after the first.
inline unsigned multiByteLength(char const* p) noexcept {
    unsigned const lead = byteAt(p);
    if (lead < 0xE0) return lead >= 0xC2 && isContinuation(byteAt(p + 1)) ? 2 : 0;
    if (!isContinuation(byteAt(p + 1)) || !isContinuation(byteAt(p + 2))) return 0;
    unsigned const high = (lead << 6U) | (byteAt(p + 1) & 0x3FU); // all but the last six bits
    if (lead < 0xF0) {
        unsigned const code = ((high << 6U) | (byteAt(p + 2) & 0x3FU)) & 0xFFFFU;
        return code >= 0x800 && code - 0xD800U >= 0x800 && code < 0xFFFE ? 3 : 0;
    }
    // Between F0 90 and F4 8F.
    return isContinuation(byteAt(p + 3)) && high - 0x3C10U < 0x100U ? 4 : 0;
}

// Whether more text may make a whole character of what begins at p.
inline bool mayBeCut(char const* p, char const* end) noexcept {
    if (p == end || !isBeyondAscii(*p) || end - p >= 4) return false;
    unsigned const length = multiByteLength(p);
    return length == 0 || end - p < static_cast<std::ptrdiff_t>(length);
}

// Goes over characters beyond ASCII. Stays at one that is not whole or not allowed.
inline char const* skipBeyondAscii(char const* p, char const* end) noexcept {
    while (p < end && isBeyondAscii(*p)) {
        unsigned const length = multiByteLength(p);
        if (length == 0 || end - p < static_cast<std::ptrdiff_t>(length)) return p;
        p += length;
    }
    return p;
}

// How many of the first `count` bytes of a block are whole characters of two or three bytes that
// need no closer look, or ASCII; what is cut off by the end of the block is left. 0 when a closer
// look is needed: characters of four bytes, and leads that allow only some second bytes.
//
// Each byte is a continuation, one of the leads here, or ASCII. Continuations have to be exactly
// where leads ask for them, which takes two shifts of the leads' bits.
template <class Block>
unsigned countPlainCharacters(Block block, unsigned count) noexcept {
    auto const byte = [](int value) { return static_cast<char>(value); };
    unsigned const continuations = block.below(byte(0xC0)).bits();
    unsigned const threes =
        (block.between(byte(0xE1), byte(0xEC)) | block.equal(byte(0xEE))).bits();
    unsigned const leads = block.between(byte(0xC2), byte(0xDF)).bits() | threes;
    unsigned const others = block.below('\0').bits() & ~(continuations | leads);
    unsigned const expected = leads << 1U | threes << 2U;
    unsigned const looked = (2U << count) - 1; // with the byte that ended the count
    if (((others | (expected ^ continuations)) & looked & 0xFFFFU) != 0) return 0;
    bool const isCut = count == blockSize && (expected >> blockSize) != 0;
    return isCut ? static_cast<unsigned>(std::bit_width(leads)) - 1 : count;
}

// Where `stops`, of a block, first has a byte of ASCII, or where a character is wrong.
template <class Block, class Stops>
[[gnu::noinline]] char const* scanFarTo(char const* p, char const* end, Stops stops) noexcept {
    while (p < end) {
        Block const block = Block::at(p);
        auto const found = stops(block);
        unsigned const first = found.first();
        if (p + first >= end) return end;
        if (first == blockSize) {
            p += blockSize;
            continue;
        }
        if (!isBeyondAscii(p[first])) return p + first;
        unsigned const stop = found.without(block.below('\0')).first();
        unsigned const plain = p + stop < end ? countPlainCharacters(block, stop) : 0;
        if (plain != 0) {
            p += plain;
            if (plain == stop && stop != blockSize) return p;
            continue;
        }
        char const* const next = skipBeyondAscii(p + first, end);
        if (next == p + first) return next;
        p = next;
    }
    return end;
}

// The same where most scans end in their first block, and at `usual`.
template <class Block, class Stops>
[[gnu::always_inline]] inline char const* scanTo(char const* p, char const* end, char usual,
                                                 Stops stops) noexcept {
    p += stops(Block::at(p)).first();
    return p < end && *p == usual ? p : scanFarTo<Block>(p, end, stops);
}

// What no text may hold, line ends that are not LF, and what is beyond ASCII.
template <class Block>
auto unusual(Block block) noexcept {
    return block.below(' ').without(block.equal('\t') | block.equal('\n'));
}

// Text ends at '<'; '&', ']' and CR need a closer look.
template <class Block = NativeBlock>
[[gnu::always_inline]] inline char const* findTextStop(char const* p, char const* end) noexcept {
    return scanTo<Block>(p, end, '<', [](Block block) {
        return unusual(block) | block.equal('<') | block.equal('&') | block.equal(']');
    });
}

// An attribute's value ends at its quote; '&' and white space other than blanks are replaced.
template <char quote, class Block = NativeBlock>
[[gnu::always_inline]] inline char const* findValueStop(char const* p, char const* end) noexcept {
    return scanTo<Block>(p, end, quote, [](Block block) {
        return block.below(' ') | block.equal(quote) | block.equal('<') | block.equal('&');
    });
}

template <class Block = NativeBlock>
inline char const* findValueStop(char const* p, char const* end, char quote) noexcept {
    return quote == '"' ? findValueStop<'"', Block>(p, end) : findValueStop<'\'', Block>(p, end);
}

// Comments, CDATA sections and processing instructions may end at one character; CR is replaced.
template <class Block = NativeBlock>
char const* findStop(char const* p, char const* end, char last) noexcept {
    return scanTo<Block>(p, end, last,
                         [last](Block block) { return unusual(block) | block.equal(last); });
}

// A name ends in front of the first byte of ASCII that no name has. Nothing else is checked.
template <class Block = NativeBlock>
inline char const* findNameEnd(char const* p, char const* end) noexcept {
    unsigned index = blockSize;
    for (; p < end && index == blockSize; p += index) {
        Block const block = Block::at(p);
        auto const inName = block.letters() | block.between('0', ':') | block.between('-', '.') |
                            block.equal('_') | block.below('\0');
        index = inName.leading();
    }
    return p < end ? p : end;
}

// After the white space at p.
template <class Block = NativeBlock>
inline char const* findBlankEnd(char const* p, char const* end) noexcept {
    unsigned index = blockSize;
    for (; p < end && index == blockSize; p += index) {
        Block const block = Block::at(p);
        auto const blank =
            block.equal(' ') | block.equal('\n') | block.equal('\t') | block.equal('\r');
        index = blank.leading();
    }
    return p < end ? p : end;
}

} // namespace tibxml::reader
