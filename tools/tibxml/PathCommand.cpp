#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include <TibXml/WXPath.h>

#include "Commands.h"
#include "Output.h"
#include "Select.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples =
    R"(Every string makes some path: this is how it is split, not whether a query would take it.

Examples:
  tibxml path "/settings/window[@id='main']/title"
  tibxml path "../item[@id='3'][1]/@name")";

void printPart(std::string_view name, CString const& text) {
    constexpr std::size_t width = 8;
    std::string line{name};
    if (!text.IsEmpty()) line.append(width - name.size(), ' ') += toUtf8(text);
    printLine(line);
}

// Without steps only the prefix is left to put together.
CString prefixOf(WXPath path) {
    if (!path.IsEmpty()) return path.GetRoot().GetParentOfLeaf().ToString();
    path.Normalize();
    return path.ToString();
}

std::vector<CString> clausesOf(WXPath const& step) {
    std::vector<CString> clauses;
    CString clause;
    for (int index = 0; step.GetFilterClause(index, clause); ++index)
        clauses.push_back(clause);
    return clauses;
}

CString nameOf(WXPath step, std::vector<CString> const& clauses) {
    for (CString const& clause : clauses)
        step.RemoveFilterClause(clause);
    return step.ToString();
}

void printStep(WXPath const& step) {
    std::vector<CString> const clauses = clausesOf(step);
    printPart("step", nameOf(step, clauses));
    for (CString const& clause : clauses)
        printPart("clause", clause);
}

ExitStatus run(std::string const& text) {
    WXPath const path{toWide(text)};
    printPart("prefix", prefixOf(path));
    for (WXPath rest = path; !rest.IsEmpty(); rest = rest.GetChildOfRoot())
        printStep(rest.GetRoot().GetLeaf());
    printPart("string", rebuilt(path));
    printPart("root", path.GetRoot().ToString());
    printPart("leaf", path.GetLeaf().ToString());
    printPart("parent", path.GetParentOfLeaf().ToString());
    printPart("child", path.GetChildOfRoot().ToString());
    return ExitStatus::found;
}

} // namespace

void addPath(CLI::App& program, Task& task) {
    auto const path = std::make_shared<std::string>();
    CLI::App& command = *program.add_subcommand("path", "Take a path apart");
    command.add_option("PATH", *path, "Any path")->option_text("REQUIRED")->required();
    command.footer(examples);
    command.callback([&task, path] { task = [path] { return run(*path); }; });
}

} // namespace tibxml::tool
