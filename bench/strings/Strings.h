// Every string of a localisation map, each looked up once.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "../Operation.h"

namespace bench {

// In so many contexts, as programs have windows.
struct StringSet {
    std::size_t contexts;
    std::size_t perContext;

    std::size_t size() const noexcept { return contexts * perContext; }
};

// A linear search takes minutes for all of them, so the others look up one in so many, and their
// time counts that many times. A prime, so that they do not always ask the same context.
inline constexpr std::size_t sampleStep = 997;

std::string contextName(std::size_t context);
std::string keyName(std::size_t key);

// The document, as its file would be.
std::string stringMap(StringSet const& set);

ContenderPtr tibxmlStrings(StringSet const& set);
ContenderPtr pugixmlStrings(StringSet const& set);

std::vector<Operation> stringOperations();

} // namespace bench
