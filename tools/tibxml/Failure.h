#pragma once

#include <string>

#include "ExitStatus.h"

namespace tibxml::tool {

/// What a command throws to end: the line that its user gets to see, and the status of the program.
struct Failure {
    ExitStatus status;
    std::string line;
};

/// A failure that begins with the program's name: `tibxml: settings.xml: no such file`.
Failure failure(ExitStatus status, std::string const& message);

/// Writes a line to the standard error, freed of what would break it into several.
void complain(std::string const& line);

/// Writes the line that tells what the exception being handled is about, and says how the program
/// has to end. To be called in a handler; every exception has an answer.
ExitStatus reportException() noexcept;

} // namespace tibxml::tool
