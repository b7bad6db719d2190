#include "Output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <unistd.h>

namespace tibxml::tool {

namespace {

OutputFailure lastFailure() {
    int const reason = errno;
    return {reason == EPIPE, "cannot write the output: " + std::generic_category().message(reason)};
}

} // namespace

void print(std::string_view bytes) {
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) throw lastFailure();
}

void printLine(std::string_view text) {
    print(text);
    print("\n");
}

void printLines(std::string_view text) {
    print(text);
    if (!text.ends_with('\n')) print("\n");
}

void finishOutput() {
    if (std::fflush(stdout) == 0) return;
    if (OutputFailure const failure = lastFailure(); !failure.isClosedByReader) throw failure;
}

namespace {

constexpr std::chrono::seconds patience{1};
constexpr std::chrono::milliseconds period{200};

} // namespace

Progress::Progress() noexcept
    : isTerminal_{::isatty(STDERR_FILENO) == 1},
      next_{Clock::now() + patience} {}

Progress::~Progress() {
    if (isShown_) std::fputs("\r\033[K", stderr);
}

void Progress::show(std::uint64_t bytes, std::uint64_t elements) noexcept {
    if (!isTerminal_) return;
    Clock::time_point const now = Clock::now();
    if (now < next_) return;
    next_ = now + period;
    isShown_ = true;
    std::fprintf(stderr, "\r%llu MB, %llu elements\033[K",
                 static_cast<unsigned long long>(bytes / 1'000'000),
                 static_cast<unsigned long long>(elements));
}

} // namespace tibxml::tool
