#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "Failure.h"

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

/// Brings what was printed to its end. Throws `OutputFailure`, but is content when nothing reads
/// any more.
void finishOutput();

/// Shows on a terminal how far something long has come: nothing in the first second, then a line
/// that is written over again and again, and taken away in the end. Shows nothing when the standard
/// error is not a terminal.
class Progress {
public:
    Progress() noexcept;
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    /// To be called often with how many bytes were read and elements seen.
    void show(std::uint64_t bytes, std::uint64_t elements) noexcept;

private:
    using Clock = std::chrono::steady_clock;

    bool isTerminal_;
    bool isShown_ = false;
    Clock::time_point next_;
};

} // namespace tibxml::tool
