// Many numbers and texts folded into one number, to see whether two libraries found the same.
#pragma once

#include <cstdint>
#include <string_view>

namespace bench {

class Fingerprint {
public:
    void add(std::uint64_t number) noexcept { value_ = (value_ ^ number) * 0x100000001B3U; }

    template <class Char>
    void addVisible(std::basic_string_view<Char> text) noexcept {
        for (Char const c : text)
            if (c > Char{' '} || c < Char{0}) add(static_cast<std::uint64_t>(c));
    }

    std::uint64_t value() const noexcept { return value_; }

private:
    std::uint64_t value_ = 0xCBF29CE484222325U;
};

} // namespace bench
