// What is done in a process that belongs to one library.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

inline constexpr char const* aloneOption = "--alone";

struct Task {
    std::size_t comparison; // by place in comparisons()
    std::size_t contestant; // by place in the comparison
    std::string path;       // of the document
    int samples;            // none: what the library found is wanted, not its time
};

std::vector<std::string> argumentsOf(Task const& task);
Task taskOf(std::vector<std::string> const& arguments);

// Does the task in this process and prints the samples, or the answer, a number on each line.
// Seconds of the processor and bytes; throws what the contender throws.
void doAlone(Task const& task);

} // namespace bench
