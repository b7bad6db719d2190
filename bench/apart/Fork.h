// Work done in a copy of this process, which is gone afterwards.
#pragma once

#include <exception>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

// Throws when the process did not end with status 0.
inline void awaitProcess(pid_t process) {
    int status = 0;
    if (waitpid(process, &status, 0) != process || status != 0)
        throw std::runtime_error{"a process of a measurement fails"};
}

// Runs the work in a fork that ends without clean-up, and waits for its end.
template <class Work>
void inFork(Work work) {
    pid_t const process = fork();
    if (process < 0) throw std::runtime_error{"the system makes no process"};
    if (process == 0) {
        try {
            work();
            _exit(0);
        } catch (std::exception const&) {
            _exit(1);
        }
    }
    awaitProcess(process);
}

} // namespace bench
