// Finds where texts, values and names end, block by block, and checks on the way that everything
// is UTF-8 and allowed in XML.
//
// All functions look at text from `p` up to `end` and return the first place that needs a closer
// look, or `end`. They may load, but never count, up to a block of bytes after `end`.
#pragma once

#include "Simd.h"

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

// Where `stops`, of a block, first tells a byte of ASCII, or where a character is wrong.
template <class Block, class Stops>
char const* scanTo(char const* p, char const* end, Stops stops) noexcept {
    while (p < end) {
        unsigned const index = stops(Block::at(p)).first();
        p += index;
        if (index == blockSize) continue;
        if (p >= end) return end;
        if (!isBeyondAscii(*p)) return p;
        char const* const next = skipBeyondAscii(p, end);
        if (next == p) return p;
        p = next;
    }
    return end;
}

// What no text may hold, line ends that are not LF, and what is beyond ASCII.
template <class Block>
auto unusual(Block block) noexcept {
    return block.below(' ').without(block.equal('\t') | block.equal('\n'));
}

// Text ends at '<'; '&', ']' and CR need a closer look.
template <class Block = NativeBlock>
char const* findTextStop(char const* p, char const* end) noexcept {
    return scanTo<Block>(p, end, [](Block block) {
        return unusual(block) | block.equal('<') | block.equal('&') | block.equal(']');
    });
}

// An attribute's value ends at its quote; '&' and white space other than blanks are replaced.
template <class Block = NativeBlock>
char const* findValueStop(char const* p, char const* end, char quote) noexcept {
    return scanTo<Block>(p, end, [quote](Block block) {
        return block.below(' ') | block.equal(quote) | block.equal('<') | block.equal('&');
    });
}

// Comments, CDATA sections and processing instructions may end at one character; CR is replaced.
template <class Block = NativeBlock>
char const* findStop(char const* p, char const* end, char last) noexcept {
    return scanTo<Block>(p, end,
                         [last](Block block) { return unusual(block) | block.equal(last); });
}

// A name ends in front of the first byte of ASCII that no name has. Nothing else is checked.
template <class Block = NativeBlock>
char const* findNameEnd(char const* p, char const* end) noexcept {
    while (p < end) {
        Block const block = Block::at(p);
        auto const inName = block.letters() | block.between('0', ':') | block.between('-', '.') |
                            block.equal('_') | block.below('\0');
        unsigned const index = inName.inverted().first();
        p += index;
        if (index != blockSize) break;
    }
    return p < end ? p : end;
}

} // namespace tibxml::reader
