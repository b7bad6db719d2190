// One line of the table: the same operation by us and by the others.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <string>

#include "Contender.h"

namespace bench {

enum Library : std::size_t { tibxml, pugixml, libxml2 };

inline constexpr std::size_t libraryCount = 3;
inline constexpr std::array<char const*, libraryCount> libraryNames{"TibXml", "pugixml", "libxml2"};

// How many times better than a peer we want to be; 0 where nothing is asked.
struct Targets {
    double pugixml = 0;
    double libxml2 = 0;
};

struct Operation {
    std::string name;
    std::array<ContenderPtr, libraryCount> contenders; // null for who does not take part
    Targets targets;
};

enum class Unit { seconds, bytes };

// The value of a library that does not take part.
inline constexpr double absent = std::numeric_limits<double>::max();

struct Row {
    std::string name;
    Unit unit;
    std::array<double, libraryCount> values;
    Targets targets;
};

} // namespace bench
