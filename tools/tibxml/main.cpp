#include <algorithm>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include <TibXml/platform/ComRuntime.h>

#include "Arguments.h"
#include "Commands.h"
#include "Failure.h"
#include "Output.h"

namespace tibxml::tool {

namespace {

constexpr char const* description = "Check, query, read, change and validate XML files";

constexpr char const* examples =
    R"(Status: 0 found, 1 not found or not well-formed, 2 called wrongly, or a file that
cannot be read or written.

Examples:
  tibxml check settings.xml
  tibxml query settings.xml "//file/@opened" --text
  tibxml get settings.xml autosave/minutes --type int --default 5
  tibxml set settings.xml autosave/minutes 15 --type int
  tibxml delete settings.xml "recent/file[3]"
  tibxml layered get defaults.xml user.xml autosave @enabled --type bool
  tibxml path "/settings/window[@id='main']/title"
  tibxml json settings.xml --pretty
  tibxml strings german.xml menu open
  tibxml events settings.xml
  tibxml stats settings.xml
  tibxml validate settings.xml settings.xsd
  tibxml transform settings.xml titles.xsl

"tibxml COMMAND --help" says more about a command.)";

// How to ask for help about the command that was called, or about the program.
std::string callForHelp(CLI::App const& program) {
    auto const called = program.get_subcommands();
    return "tibxml " + (called.empty() ? "" : called.front()->get_name() + " ") + "--help";
}

std::string complaint(CLI::App const& program, CLI::ParseError const& error) {
    bool const isUnknown = program.get_subcommands().empty() && program.remaining_size() > 0;
    std::string const what =
        isUnknown ? "there is no '" + program.remaining().front() + "'" : error.what();
    return what + " (see " + callForHelp(program) + ")";
}

void parse(CLI::App& program, std::vector<std::string> arguments) {
    std::reverse(arguments.begin(), arguments.end()); // as the parser wants them
    try {
        program.parse(std::move(arguments));
    } catch (CLI::CallForHelp const&) {
        printLines(program.help());
    } catch (CLI::CallForVersion const& version) {
        printLine(version.what());
    } catch (CLI::ParseError const& error) {
        throw failure(ExitStatus::failed, complaint(program, error));
    }
}

// Does what the arguments ask for. Throws `Failure` when they are wrong, and whatever the command
// throws.
ExitStatus runProgram(std::vector<std::string> arguments) {
    CLI::App program{description, "tibxml"};
    Task task;
    for (AddCommand* const add : allCommands)
        add(program, task);
    program.set_version_flag("--version", "tibxml " TIBXML_VERSION);
    program.require_subcommand(1);
    program.footer(examples);
    parse(program, std::move(arguments));
    return task ? task() : ExitStatus::found;
}

// Whatever is thrown ends as one line and a status.
template <class Call>
ExitStatus guarded(Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return reportException();
    }
}

ExitStatus run(int count, char const* const* arguments) {
    return runProgram(argumentsOf(count, arguments));
}

// What was printed has to come out, too. After a failure that is no longer worth a complaint of its
// own, which would often be the same once more.
ExitStatus finish(ExitStatus status) {
    if (status != ExitStatus::failed) finishOutput();
    return status;
}

} // namespace

} // namespace tibxml::tool

int main(int count, char** arguments) {
    std::signal(SIGPIPE, SIG_IGN); // writing reports by itself that the reader has gone
    CoInitialize(nullptr);
    auto const status = tibxml::tool::guarded([&] { return tibxml::tool::run(count, arguments); });
    return static_cast<int>(tibxml::tool::guarded([&] { return tibxml::tool::finish(status); }));
}