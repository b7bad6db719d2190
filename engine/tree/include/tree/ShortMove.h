// Moving a few bytes, as most names and texts are: far fewer instructions than a call for it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tibxml::tree {

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

// Moves up to 16 bytes to a place that does not begin within them; both may be null for none.
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

} // namespace tibxml::tree
