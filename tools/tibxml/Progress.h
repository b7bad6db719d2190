#pragma once

#include <chrono>
#include <cstdint>

namespace tibxml::tool {

/// Shows on a terminal how far something long has come: nothing in the first second, then a line
/// that is written over again and again, and taken away in the end. Shows nothing when the standard
/// error is no terminal.
class Progress {
public:
    Progress() noexcept;
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    /// To be told often how many bytes were read and elements seen.
    void show(std::uint64_t bytes, std::uint64_t elements) noexcept;

private:
    using Clock = std::chrono::steady_clock;

    bool isTerminal_;
    bool isShown_ = false;
    unsigned calls_ = 0;
    Clock::time_point next_;
};

} // namespace tibxml::tool
