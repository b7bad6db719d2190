#pragma once

#include <string>
#include <vector>

#include "ExitStatus.h"

namespace tibxml::tool {

/// Does what the arguments ask for. Throws `Failure` when they are wrong, and whatever the command
/// throws.
ExitStatus runProgram(std::vector<std::string> arguments);

} // namespace tibxml::tool
