#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

// Numbers from and to wide text as the Windows runtime library has them, where `long` is 32-bit.

namespace tibxml::platform {

/// Reads a decimal integer: white space as `std::iswspace` has it, a sign, digits 0 to 9. A number
/// beyond the type becomes the type's nearest limit, all its digits count as read. `*end` is where
/// reading stopped: at `text` itself when there was no digit, and then the result is 0.
std::int32_t parseInt32(wchar_t const* text, wchar_t const** end) noexcept;
std::int64_t parseInt64(wchar_t const* text, wchar_t const** end) noexcept;

/// The characters of a number, in a buffer of its own and with a NUL after them.
template <std::size_t Capacity>
class NumberText {
public:
    std::wstring_view view() const noexcept { return {text_.data(), length_}; }

    operator wchar_t const*() const noexcept { return text_.data(); }

    /// Adds a character; there has to be room.
    void append(wchar_t character) noexcept {
        text_[length_++] = character;
        text_[length_] = L'\0';
    }

    /// Adds characters that the caller writes, at what it returns; there has to be room.
    wchar_t* extend(std::size_t count) noexcept {
        wchar_t* const begin = text_.data() + length_;
        length_ += count;
        text_[length_] = L'\0';
        return begin;
    }

private:
    std::size_t length_ = 0;
    std::array<wchar_t, Capacity + 1> text_;
};

using IntegerText = NumberText<20>; ///< the longest: -9223372036854775808

/// A sign, the 309 digits of the greatest double, the separator and six more digits.
using DoubleText = NumberText<1 + 309 + 1 + 6>;

IntegerText signedText(std::int64_t number) noexcept;
IntegerText unsignedText(std::uint64_t number) noexcept;

/// The plain decimal digits of an integer, with a minus sign when it is negative.
template <std::integral Integer>
IntegerText integerText(Integer number) noexcept {
    if constexpr (std::is_signed_v<Integer>) {
        return signedText(number);
    } else {
        return unsignedText(number);
    }
}

/// A number with exactly six digits after the decimal separator, which is that of the current C
/// locale, and no exponent: what "%f" makes. "inf" and "nan" with their sign for what is not a
/// number.
DoubleText doubleText(double number) noexcept;

} // namespace tibxml::platform
