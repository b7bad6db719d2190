// Counting what is in a file without keeping any of it, as `tibxml stats` does.
#pragma once

#include <cstdint>
#include <string>

#include "../Contender.h"
#include "../Fingerprint.h"

namespace bench {

struct FileCounts {
    std::uint64_t elements = 0;
    std::uint64_t attributes = 0;
    std::uint64_t textBytes = 0; // as UTF-8
    std::uint64_t depth = 0;     // elements inside each other

    std::uint64_t fingerprint() const noexcept {
        Fingerprint print;
        for (std::uint64_t const count : {elements, attributes, textBytes, depth})
            print.add(count);
        return print.value();
    }
};

ContenderPtr tibxmlCount(std::string const& path);
ContenderPtr libxml2Count(std::string const& path);

} // namespace bench
