#include "Output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

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

} // namespace tibxml::tool
