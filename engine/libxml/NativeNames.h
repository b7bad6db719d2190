// The tree's names as the strings that libxml2 works with.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>
#include <string_view>

#include <libxml/dict.h>

#include <tree/Name.h>

namespace tibxml::validation {

struct NativeName {
    xmlChar const* local;
    xmlChar const* uri; // null for none
};

// Each distinct string is kept once, however many nodes have it. All functions throw
// std::bad_alloc.
class NativeNames {
public:
    NativeNames() : dictionary_{xmlDictCreate()} {
        if (!dictionary_) throw std::bad_alloc{};
    }

    NativeName of(tree::Name const* name) {
        Cached& cached = cache_[(reinterpret_cast<std::uintptr_t>(name) >> 4) % cache_.size()];
        if (cached.name != name) {
            cached = {name, {string(name->local), name->uri.empty() ? nullptr : string(name->uri)}};
        }
        return cached.native;
    }

    // Zero-terminated; lives as long as this.
    xmlChar const* string(std::string_view text) {
        if (text.size() > longest) throw std::length_error{"a name is too long"};
        xmlChar const* const kept =
            xmlDictLookup(dictionary_.get(), reinterpret_cast<xmlChar const*>(text.data()),
                          static_cast<int>(text.size()));
        if (kept == nullptr) throw std::bad_alloc{};
        return kept;
    }

private:
    static constexpr std::size_t longest = 1U << 30;

    struct Free {
        void operator()(xmlDict* dictionary) const noexcept { xmlDictFree(dictionary); }
    };

    struct Cached {
        tree::Name const* name;
        NativeName native;
    };

    std::unique_ptr<xmlDict, Free> dictionary_;
    std::array<Cached, 256> cache_{};
};

} // namespace tibxml::validation
