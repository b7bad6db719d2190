// The wide forms of a document's names, each made once.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>

#include <reader/SaxReader.h>

namespace tibxml::reader {

// Names are told by the addresses of their parts, which are strings of the parser's dictionary:
// equal ones have equal addresses while one document is read.
class SaxNames {
public:
    SaxNames() = default;
    SaxNames(SaxNames const&) = delete;
    SaxNames& operator=(SaxNames const&) = delete;

    // The name with these parts, of which prefix and namespace may be null. It stays where it is as
    // long as this object. Throws std::bad_alloc.
    SaxName const& name(unsigned char const* local, unsigned char const* prefix,
                        unsigned char const* uri) {
        Key const key{local, prefix, uri};
        Recent& recent = recent_[slotOf(local)];
        return recent.name != nullptr && recent.key == key ? *recent.name : lookUp(key, recent);
    }

    // The wide form of one string of the dictionary; null counts as empty.
    std::wstring const& text(unsigned char const* string) {
        return name(string, nullptr, nullptr).local;
    }

private:
    struct Key {
        unsigned char const* local = nullptr;
        unsigned char const* prefix = nullptr;
        unsigned char const* uri = nullptr;

        bool operator==(Key const&) const = default;
    };

    struct Hash {
        std::size_t operator()(Key const& key) const noexcept;
    };

    struct Recent {
        Key key;
        SaxName const* name = nullptr;
    };

    static constexpr std::size_t slots = 256;

    static std::size_t slotOf(unsigned char const* local) noexcept {
        auto const address = reinterpret_cast<std::uintptr_t>(local);
        return (address ^ (address >> 8)) % slots;
    }

    // The name from the table, which the slot is for from now on.
    SaxName const& lookUp(Key const& key, Recent& recent);

    // In front of the table, by the address of the local name.
    std::array<Recent, slots> recent_{};
    std::unordered_map<Key, SaxName, Hash> names_;
};

} // namespace tibxml::reader
