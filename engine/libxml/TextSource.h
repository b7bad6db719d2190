// A source whose bytes are in memory.
#pragma once

#include <algorithm>
#include <cstring>
#include <string_view>

#include <reader/ByteSource.h>

namespace tibxml::reader {

class TextSource final : public ByteSource {
public:
    explicit TextSource(std::string_view text) noexcept : rest_{text} {}

    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override {
        std::size_t const count = std::min(size, rest_.size());
        std::memcpy(buffer, rest_.data(), count);
        rest_.remove_prefix(count);
        return static_cast<std::ptrdiff_t>(count);
    }

private:
    std::string_view rest_;
};

} // namespace tibxml::reader
