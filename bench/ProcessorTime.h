// The clock that everything is measured by.
#pragma once

#include <ctime>

namespace bench {

// What the processor has spent on this thread, in seconds: other programs on the machine matter as
// little as can be.
inline double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

} // namespace bench
