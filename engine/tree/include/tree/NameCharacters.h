// Which characters XML names are made of.
#pragma once

#include <algorithm>
#include <string_view>

namespace tibxml::tree {

// The first character of a name without colon.
bool isNameStart(wchar_t character) noexcept;

// The characters behind the first.
bool isNamePart(wchar_t character) noexcept;

// Space, tab, carriage return, line feed.
template <class Character>
constexpr bool isBlank(Character c) noexcept {
    return c == Character{' '} || c == Character{'\t'} || c == Character{'\n'} ||
           c == Character{'\r'};
}

// Whether a text has nothing else; an empty one has not.
inline bool isBlankText(std::string_view text) noexcept {
    return std::all_of(text.begin(), text.end(), isBlank<char>);
}

template <class Character>
constexpr bool isDigit(Character c) noexcept {
    return c >= Character{'0'} && c <= Character{'9'};
}

} // namespace tibxml::tree
