#pragma once

namespace tibxml::tool {

/// How the program ends; the greater, the worse.
enum class ExitStatus : int {
    found = 0,    ///< done, and there was something
    notFound = 1, ///< nothing there, or not what it has to be
    failed = 2,   ///< called wrongly, or the input or the output does not work
};

} // namespace tibxml::tool
