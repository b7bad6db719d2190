// One operation by us and by others, each in a process of its own.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "../Contender.h"
#include "../load/Load.h"

namespace bench {

// How a sample is taken.
enum class Way {
    warm,        // again and again in one process, on memory that the run before has used
    cold,        // the first time in a fork, on memory that nothing has used
    coldProcess, // a fork that does it once and exits, by the clock on the wall
    memory,      // bytes for each node while the document is loaded
};

struct Contestant {
    char const* library;
    std::function<ContenderPtr(Sources const&)> make;
    double atMost = 0; // our time divided by theirs; 0 where nothing is asked
};

struct Comparison {
    std::string name;
    std::string document; // its name in the corpus
    From from;            // what of the sources has to be there
    Way way;
    std::vector<Contestant> contestants; // ours first
};

std::vector<Comparison> const& comparisons();

} // namespace bench
