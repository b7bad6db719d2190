// Text: which characters names are made of, how short texts are moved, and what text a subtree has.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include <tree/Node.h>

namespace tibxml::tree {

// The first character of a name without colon.
bool isNameStart(wchar_t character) noexcept;

// The characters after the first.
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

namespace shortmove {

// Moves the first and the last bytes of a range, as many each as a Word has; they may overlap.
template <class Word>
void moveEnds(char* to, char const* from, std::size_t size) noexcept {
    Word first;
    Word last;
    std::memcpy(&first, from, sizeof first);
    std::memcpy(&last, from + size - sizeof last, sizeof last);
    std::memcpy(to, &first, sizeof first);
    std::memcpy(to + size - sizeof last, &last, sizeof last);
}

} // namespace shortmove

// Moves up to 16 bytes, as most names and texts have, to a place that does not begin within them;
// both may be null for none. Takes far fewer instructions than a call of the C library.
// Inlined wherever it is used: where the size is known nothing of the choice is left.
[[gnu::always_inline]] inline void moveShort(char* to, char const* from,
                                             std::size_t size) noexcept {
    if (size >= 8) {
        shortmove::moveEnds<std::uint64_t>(to, from, size);
    } else if (size >= 4) {
        shortmove::moveEnds<std::uint32_t>(to, from, size);
    } else {
        for (std::size_t i = 0; i != size; ++i)
            to[i] = from[i];
    }
}

// The string value of a node as XPath defines it: of an element or document the text and CDATA of
// all descendants in order, of the others their own characters. When no joining is needed the view
// points into the tree and is valid until the next edit; otherwise it points into `storage`.
std::string_view stringValue(Node const* node, std::string& storage);

// Appends the same.
void appendStringValue(Node const* node, std::string& out);

} // namespace tibxml::tree
