#pragma once

#include <string>
#include <string_view>

#include "ExitStatus.h"

namespace tibxml::tool {

/// What is thrown when the standard output takes no more.
struct OutputFailure {
    bool isClosedByReader; ///< as by `| head -1`
    std::string message;
};

/// Prints bytes as they are, and text with a line end after it. Throw `OutputFailure`.
void print(std::string_view bytes);
void printLine(std::string_view text);

/// Prints text, and a line end unless the text ends with one. Throws `OutputFailure`.
void printLines(std::string_view text);

/// Brings what was printed to its end. Throws `OutputFailure`, but is content when nobody reads any
/// more.
void finishOutput();

} // namespace tibxml::tool
