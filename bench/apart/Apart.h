// The comparisons in which each library has a process of its own.
#pragma once

#include <string_view>

namespace bench {

// Measures those whose names hold the text and prints their table. In each round every library
// gets a process, in turn, so that whatever else the machine does hits them alike; the medians are
// over all rounds. Throws std::runtime_error when the libraries' answers differ.
void printApart(std::string_view partOfName, int rounds);

} // namespace bench
