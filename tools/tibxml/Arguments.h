#pragma once

#include <string>
#include <vector>

namespace tibxml::tool {

/// The arguments of the program without its name, ready to be parsed. Throws `Failure` for one that
/// is not UTF-8.
std::vector<std::string> argumentsOf(int count, char const* const* arguments);

} // namespace tibxml::tool
