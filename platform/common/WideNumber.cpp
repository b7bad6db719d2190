#include <TibXml/platform/WideNumber.h>

#include <array>
#include <bit>
#include <charconv>
#include <clocale>
#include <cwchar>
#include <cwctype>
#include <limits>
#include <type_traits>

namespace tibxml::platform {

namespace {

bool isDigit(wchar_t character) noexcept {
    return character >= L'0' && character <= L'9';
}

/// The digits' value, or `limit` when that is less.
std::uint64_t parseDigits(wchar_t const*& text, std::uint64_t limit) noexcept {
    std::uint64_t value = 0;
    for (; isDigit(*text); ++text) {
        auto const digit = static_cast<std::uint64_t>(*text - L'0');
        value = value > (limit - digit) / 10 ? limit : value * 10 + digit;
    }
    return value;
}

template <class Integer>
Integer parseInteger(wchar_t const* text, wchar_t const** end) noexcept {
    using Unsigned = std::make_unsigned_t<Integer>;
    constexpr auto greatest = static_cast<Unsigned>(std::numeric_limits<Integer>::max());
    *end = text;
    while (!isDigit(*text) && std::iswspace(static_cast<std::wint_t>(*text)) != 0)
        ++text;
    auto const negative = *text == L'-';
    if (negative || *text == L'+') ++text;
    if (!isDigit(*text)) return 0;
    auto const limit = static_cast<std::uint64_t>(greatest) + (negative ? 1u : 0u);
    auto const value = static_cast<Unsigned>(parseDigits(text, limit));
    *end = text;
    return static_cast<Integer>(negative ? Unsigned{0} - value : value);
}

/// The decimal separator of the C locale as wide functions read and write it. What the locale says
/// in bytes is of the number category's encoding, which the character category may not know.
wchar_t decimalSeparator() noexcept {
    auto const* const separator = std::localeconv()->decimal_point;
    if (separator[0] == '.' && separator[1] == '\0') return L'.';
    std::array<wchar_t, 8> number{};
    auto const length = std::swprintf(number.data(), number.size(), L"%.1f", 0.5);
    return length == 3 ? number[1] : L'.';
}

// 1, 10, 100 … as far as 64 bits reach.
constexpr auto powersOfTen = [] {
    std::array<std::uint64_t, 20> powers{1};
    for (std::size_t i = 1; i != powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

// By the number of bits, of which each is worth 1233/4096 digits as closely as 64 bits need.
std::size_t digitCount(std::uint64_t value) noexcept {
    std::uint64_t const counted = value | 1; // zero has one digit, too
    auto const least = static_cast<std::size_t>(std::bit_width(counted)) * 1233 / 4096;
    return least + (counted >= powersOfTen[least] ? 1 : 0);
}

// From the last digit to the first, in the arithmetic of the type: most numbers are short.
template <class Unsigned>
void appendDigits(IntegerText& text, Unsigned value) noexcept {
    std::size_t const count = digitCount(value);
    wchar_t* const begin = text.extend(count);
    for (wchar_t* digit = begin + count; digit != begin; value /= 10)
        *--digit = static_cast<wchar_t>(L'0' + static_cast<wchar_t>(value % 10));
}

void appendDecimal(IntegerText& text, std::uint64_t value) noexcept {
    constexpr auto greatest = std::numeric_limits<std::uint32_t>::max();
    return value <= greatest ? appendDigits(text, static_cast<std::uint32_t>(value))
                             : appendDigits(text, value);
}

} // namespace

std::int32_t parseInt32(wchar_t const* text, wchar_t const** end) noexcept {
    return parseInteger<std::int32_t>(text, end);
}

std::int64_t parseInt64(wchar_t const* text, wchar_t const** end) noexcept {
    return parseInteger<std::int64_t>(text, end);
}

IntegerText signedText(std::int64_t number) noexcept {
    IntegerText text;
    auto const value = static_cast<std::uint64_t>(number);
    if (number < 0) text.append(L'-');
    appendDecimal(text, number < 0 ? std::uint64_t{0} - value : value);
    return text;
}

IntegerText unsignedText(std::uint64_t number) noexcept {
    IntegerText text;
    appendDecimal(text, number);
    return text;
}

DoubleText doubleText(double number) noexcept {
    std::array<char, 1 + 309 + 1 + 6> digits; // NOLINT(*-member-init): to_chars fills it
    auto const end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::fixed, 6)
                         .ptr;
    DoubleText text;
    for (auto const* from = digits.data(); from != end; ++from)
        text.append(*from == '.' ? decimalSeparator() : static_cast<wchar_t>(*from));
    return text;
}

} // namespace tibxml::platform
