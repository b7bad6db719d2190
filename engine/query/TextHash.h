// A fast hash of texts for tables in memory; the values differ between machines.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace tibxml::query {

inline std::uint64_t mixHash(std::uint64_t hash, std::uint64_t word) noexcept {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
    return hash ^ (hash >> 32U);
}

/// Eight bytes at a time, because expressions are hashed on each use.
template <class Character>
std::size_t hashText(std::basic_string_view<Character> text) noexcept {
    auto const* bytes = reinterpret_cast<char const*>(text.data());
    std::size_t left = text.size() * sizeof(Character);
    std::uint64_t hash = left;
    for (; left >= 8; left -= 8, bytes += 8) {
        std::uint64_t word;
        std::memcpy(&word, bytes, 8);
        hash = mixHash(hash, word);
    }
    std::uint64_t rest = 0;
    if (left != 0) std::memcpy(&rest, bytes, left);
    return static_cast<std::size_t>(mixHash(hash, rest));
}

} // namespace tibxml::query
