// Sixteen bytes of text at once: the few operations on blocks that finding the end of a text, a
// value or a name needs. NativeBlock is the processor's own; PlainBlock does the same anywhere and
// is tested against it.
//
// A mask says of each byte whether something holds; first() is the index of the first byte of
// which it does, 16 when there is none; leading() is the number of bytes at the front of which it
// does; bits() has a bit for each byte, the first one lowest.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#elif defined(__ARM_NEON) && defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace tibxml::reader {

inline constexpr std::size_t blockSize = 16;

class PlainBlock {
public:
    class Mask {
    public:
        explicit Mask(unsigned bits) noexcept : bits_{bits} {}

        Mask operator|(Mask other) const noexcept { return Mask{bits_ | other.bits_}; }

        Mask without(Mask other) const noexcept { return Mask{bits_ & ~other.bits_}; }

        Mask inverted() const noexcept { return Mask{~bits_ & 0xFFFFU}; }

        unsigned first() const noexcept {
            return static_cast<unsigned>(std::countr_zero(bits_ | 0x10000U));
        }

        unsigned leading() const noexcept { return static_cast<unsigned>(std::countr_one(bits_)); }

        unsigned bits() const noexcept { return bits_; }

    private:
        unsigned bits_;
    };

    static PlainBlock at(char const* bytes) noexcept {
        PlainBlock block;
        std::memcpy(block.bytes_, bytes, blockSize);
        return block;
    }

    Mask equal(char c) const noexcept {
        return mask([c](std::int8_t byte) { return byte == static_cast<std::int8_t>(c); });
    }

    Mask equal(PlainBlock other) const noexcept {
        unsigned bits = 0;
        for (unsigned i = 0; i != blockSize; ++i)
            bits |= static_cast<unsigned>(bytes_[i] == other.bytes_[i]) << i;
        return Mask{bits};
    }

    // As signed numbers, so that everything beyond ASCII is below.
    Mask below(char limit) const noexcept {
        return mask([limit](std::int8_t byte) { return byte < static_cast<std::int8_t>(limit); });
    }

    // ASCII letters; and what lies from `first` to `last`.
    Mask letters() const noexcept {
        return mask([](std::int8_t byte) { return (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z'; });
    }

    Mask between(char first, char last) const noexcept {
        return mask([=](std::int8_t byte) { return byte >= first && byte <= last; });
    }

private:
    template <class Condition>
    Mask mask(Condition condition) const noexcept {
        unsigned bits = 0;
        for (unsigned i = 0; i != blockSize; ++i)
            bits |= static_cast<unsigned>(condition(bytes_[i])) << i;
        return Mask{bits};
    }

    std::int8_t bytes_[blockSize];
};

#if defined(__SSE2__)

class NativeBlock {
public:
    class Mask {
    public:
        explicit Mask(__m128i bytes) noexcept : bytes_{bytes} {}

        Mask operator|(Mask other) const noexcept {
            return Mask{_mm_or_si128(bytes_, other.bytes_)};
        }

        Mask without(Mask other) const noexcept {
            return Mask{_mm_andnot_si128(other.bytes_, bytes_)};
        }

        Mask inverted() const noexcept { return Mask{_mm_xor_si128(bytes_, _mm_set1_epi8(-1))}; }

        unsigned first() const noexcept {
            return static_cast<unsigned>(std::countr_zero(bits() | 0x10000U));
        }

        unsigned leading() const noexcept { return static_cast<unsigned>(std::countr_one(bits())); }

        unsigned bits() const noexcept { return static_cast<unsigned>(_mm_movemask_epi8(bytes_)); }

    private:
        __m128i bytes_;
    };

    static NativeBlock at(char const* bytes) noexcept {
        return NativeBlock{_mm_loadu_si128(reinterpret_cast<__m128i const*>(bytes))};
    }

    Mask equal(char c) const noexcept { return Mask{_mm_cmpeq_epi8(bytes_, _mm_set1_epi8(c))}; }

    Mask equal(NativeBlock other) const noexcept {
        return Mask{_mm_cmpeq_epi8(bytes_, other.bytes_)};
    }

    Mask below(char limit) const noexcept {
        return Mask{_mm_cmplt_epi8(bytes_, _mm_set1_epi8(limit))};
    }

    Mask letters() const noexcept {
        return NativeBlock{_mm_or_si128(bytes_, _mm_set1_epi8(0x20))}.between('a', 'z');
    }

    // Moved to the lower end of the signed numbers, the range is what lies below one limit.
    Mask between(char first, char last) const noexcept {
        __m128i const moved = _mm_add_epi8(bytes_, _mm_set1_epi8(static_cast<char>(-128 - first)));
        return Mask{_mm_cmplt_epi8(moved, _mm_set1_epi8(static_cast<char>(-127 + last - first)))};
    }

private:
    explicit NativeBlock(__m128i bytes) noexcept : bytes_{bytes} {}

    __m128i bytes_;
};

#elif defined(__ARM_NEON) && defined(__aarch64__)

class NativeBlock {
public:
    class Mask {
    public:
        explicit Mask(uint8x16_t bytes) noexcept : bytes_{bytes} {}

        Mask operator|(Mask other) const noexcept { return Mask{vorrq_u8(bytes_, other.bytes_)}; }

        Mask without(Mask other) const noexcept { return Mask{vbicq_u8(bytes_, other.bytes_)}; }

        Mask inverted() const noexcept { return Mask{vmvnq_u8(bytes_)}; }

        unsigned first() const noexcept {
            return static_cast<unsigned>(std::countr_zero(nibbles())) / 4;
        }

        unsigned leading() const noexcept {
            return static_cast<unsigned>(std::countr_one(nibbles())) / 4;
        }

        unsigned bits() const noexcept {
            constexpr std::uint8_t places[] = {1, 2, 4, 8, 16, 32, 64, 128,
                                               1, 2, 4, 8, 16, 32, 64, 128};
            uint8x16_t const placed = vandq_u8(bytes_, vld1q_u8(places));
            return vaddv_u8(vget_low_u8(placed)) |
                   static_cast<unsigned>(vaddv_u8(vget_high_u8(placed))) << 8U;
        }

    private:
        // Four bits of each byte are left after narrowing.
        std::uint64_t nibbles() const noexcept {
            uint8x8_t const narrow = vshrn_n_u16(vreinterpretq_u16_u8(bytes_), 4);
            return vget_lane_u64(vreinterpret_u64_u8(narrow), 0);
        }

        uint8x16_t bytes_;
    };

    static NativeBlock at(char const* bytes) noexcept {
        return NativeBlock{vld1q_s8(reinterpret_cast<std::int8_t const*>(bytes))};
    }

    Mask equal(char c) const noexcept {
        return Mask{vceqq_s8(bytes_, vdupq_n_s8(static_cast<std::int8_t>(c)))};
    }

    Mask equal(NativeBlock other) const noexcept { return Mask{vceqq_s8(bytes_, other.bytes_)}; }

    Mask below(char limit) const noexcept {
        return Mask{vcltq_s8(bytes_, vdupq_n_s8(static_cast<std::int8_t>(limit)))};
    }

    Mask letters() const noexcept {
        return NativeBlock{vorrq_s8(bytes_, vdupq_n_s8(0x20))}.between('a', 'z');
    }

    Mask between(char first, char last) const noexcept {
        return Mask{vandq_u8(vcgeq_s8(bytes_, vdupq_n_s8(static_cast<std::int8_t>(first))),
                             vcleq_s8(bytes_, vdupq_n_s8(static_cast<std::int8_t>(last))))};
    }

private:
    explicit NativeBlock(int8x16_t bytes) noexcept : bytes_{bytes} {}

    int8x16_t bytes_;
};

#else

using NativeBlock = PlainBlock;

#endif

} // namespace tibxml::reader
