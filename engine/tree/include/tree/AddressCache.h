// Values found by the address that they belong to.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace tibxml::tree {

/// What was made last for the addresses that share a place: names repeat so much in a document that
/// a small table without chains answers nearly always. `Key` is a pointer, or a pair of pointers of
/// which the first decides the place. Null is not a key. As long as the cache lives, no address may
/// come to stand for something else.
template <class Key, class Value, std::size_t size = 256>
class AddressCache {
public:
    /// The value for a key; make() gives it unless it is here. Throws what make() throws.
    template <class Make>
    Value const& of(Key const& key, Make make) {
        Entry& entry = entries_[placeOf(key)];
        if (entry.key != key) entry = {key, make()};
        return entry.value;
    }

private:
    struct Entry {
        Key key;
        Value value;
    };

    static std::size_t placeOf(void const* address) noexcept {
        // Addresses differ in their middle bits; the product moves those to the top.
        constexpr std::uint64_t goldenRatio = 0x9E3779B97F4A7C15;
        return (reinterpret_cast<std::uintptr_t>(address) * goldenRatio >> 40) % size;
    }

    template <class First, class Second>
    static std::size_t placeOf(std::pair<First, Second> const& key) noexcept {
        return placeOf(key.first);
    }

    std::array<Entry, size> entries_{};
};

} // namespace tibxml::tree
