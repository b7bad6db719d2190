// How many bytes the program holds, whatever road it took them by: new, the C library, pages from
// the system, libxml2.
#pragma once

#include <cstdint>

std::int64_t liveBytes() noexcept;

// The most that was held at once since it was made, above what was held then. One at a time.
class PeakOfBytes {
public:
    PeakOfBytes() noexcept;
    PeakOfBytes(PeakOfBytes const&) = delete;
    PeakOfBytes& operator=(PeakOfBytes const&) = delete;

    std::int64_t above() const noexcept;

private:
    std::int64_t start_;
};
