#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Failure.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples = R"(Nothing is printed for a file that is well-formed.
Status: 0 all well-formed, 1 some are not, 2 some cannot be read.

Examples:
  tibxml check settings.xml
  tibxml check *.xml
  unzip -p book.odt content.xml | tibxml check -)";

// A file at fault does not keep the others from being looked at.
ExitStatus check(std::string const& file) {
    try {
        loadDocument(file);
        return ExitStatus::found;
    } catch (...) {
        return reportException();
    }
}

ExitStatus checkAll(std::vector<std::string> const& files) {
    ExitStatus worst = ExitStatus::found;
    for (std::string const& file : files)
        worst = std::max(worst, check(file));
    return worst;
}

} // namespace

void addCheck(CLI::App& program, Task& task) {
    auto const files = std::make_shared<std::vector<std::string>>();
    CLI::App& command = *program.add_subcommand("check", "Tell whether files are well-formed XML");
    addFiles(command, *files);
    command.footer(examples);
    command.callback([&task, files] { task = [files] { return checkAll(*files); }; });
}

} // namespace tibxml::tool
