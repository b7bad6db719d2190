#pragma once

#include <string>

#include <TibXml/platform/ComError.h>

namespace tibxml::tool {

/// How the program ends; the greater, the worse.
enum class ExitStatus : int {
    found = 0,    ///< done, and there was something
    notFound = 1, ///< nothing there, or not what it has to be
    failed = 2,   ///< called wrongly, or the input or the output does not work
};

/// What a command throws to end: the line that its user gets to see, and the status of the program.
struct Failure {
    ExitStatus status;
    std::string line;
};

/// A failure that begins with the program's name: `tibxml: settings.xml: no such file`.
Failure failure(ExitStatus status, std::string const& message);

/// Writes a line to the standard error, freed of what would break it into several.
void complain(std::string const& line);

/// Writes the line that says what the exception being handled is about, and says how the program
/// has to end. To be called in a handler; every exception has an answer.
ExitStatus reportException() noexcept;

/// What the engine says about a call that failed: its own words, or those for the code.
std::string describe(_com_error const& error);

} // namespace tibxml::tool
