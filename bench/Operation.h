// One line of the table: the same operation by us and by the others.
#pragma once

#include <array>
#include <cstddef>
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
    std::array<ContenderPtr, libraryCount> contenders; // null for who cannot do it, never the first
    Targets targets;
    double parts = 1; // how often a run does what the name says; the table shows the time of one
};

enum class Unit { seconds, bytes };

// The value of a library that does not take part.
inline constexpr double absent = 0;

struct Row {
    std::string name;
    Unit unit;
    std::array<double, libraryCount> values; // 0 where there was no contender
    Targets targets;
};

} // namespace bench
