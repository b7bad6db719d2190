// What is counted.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../Fingerprint.h"
#include "Sax.h"

namespace bench {

struct Counts {
    std::uint64_t documents = 0;
    std::uint64_t elements = 0;
    std::uint64_t ends = 0;
    std::uint64_t attributes = 0;
    std::uint64_t nameCharacters = 0;
    std::uint64_t valueCharacters = 0;
    std::uint64_t textCharacters = 0;

    std::uint64_t fingerprint(Letters letters) const noexcept {
        Fingerprint print;
        for (std::uint64_t const count : {documents, elements, ends, attributes})
            print.add(count);
        if (letters == Letters::any) return print.value();
        for (std::uint64_t const count : {nameCharacters, valueCharacters, textCharacters})
            print.add(count);
        return print.value();
    }
};

} // namespace bench
