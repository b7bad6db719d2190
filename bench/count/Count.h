// Counting what is in a file without keeping any of it, as `tibxml stats` does.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "../Contender.h"
#include "../Fingerprint.h"

namespace bench {

class FileCounts {
public:
    void start(std::size_t attributes) noexcept {
        ++elements_;
        attributes_ += attributes;
        deepest_ = std::max(deepest_, ++depth_);
    }

    void end() noexcept { --depth_; }

    void text(std::uint64_t bytes) noexcept { textBytes_ += bytes; }

    std::uint64_t fingerprint() const noexcept {
        Fingerprint print;
        for (std::uint64_t const count : {elements_, attributes_, textBytes_, deepest_})
            print.add(count);
        return print.value();
    }

private:
    std::uint64_t elements_ = 0;
    std::uint64_t attributes_ = 0;
    std::uint64_t textBytes_ = 0; // as UTF-8
    std::uint64_t depth_ = 0;
    std::uint64_t deepest_ = 0;
};

ContenderPtr tibxmlCount(std::string const& path);
ContenderPtr libxml2Count(std::string const& path);

} // namespace bench
