// This program once more, in a process of its own.
#pragma once

#include <string>
#include <vector>

namespace bench {

// What it prints with these arguments. Throws when it fails.
std::string outputOfThisProgram(std::vector<std::string> const& arguments);

} // namespace bench
