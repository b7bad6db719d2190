#include <csignal>
#include <utility>

#include <TibXml/platform/ComRuntime.h>

#include "Arguments.h"
#include "Failure.h"
#include "Output.h"
#include "Program.h"

namespace {

using tibxml::tool::ExitStatus;

// Whatever is thrown ends as one line and a status.
template <class Call>
ExitStatus guarded(Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return tibxml::tool::reportException();
    }
}

ExitStatus run(int count, char const* const* arguments) {
    return tibxml::tool::runProgram(tibxml::tool::argumentsOf(count, arguments));
}

// What was printed has to come out, too. After a failure that is no longer worth a complaint of its
// own, which would often be the same once more.
ExitStatus finish(ExitStatus status) {
    if (status != ExitStatus::failed) tibxml::tool::finishOutput();
    return status;
}

} // namespace

int main(int count, char** arguments) {
    std::signal(SIGPIPE, SIG_IGN); // writing says by itself that nobody reads any more
    CoInitialize(nullptr);
    ExitStatus const status = guarded([&] { return run(count, arguments); });
    return static_cast<int>(guarded([&] { return finish(status); }));
}
