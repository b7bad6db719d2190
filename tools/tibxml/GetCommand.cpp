#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Output.h"
#include "Select.h"
#include "ValueType.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples = R"(The path begins at the root element, unless it begins with "/".
It may end in the name of an attribute: window/@visible
Status: 0 printed, 1 nothing there, not of the type, or not well-formed, 2 bad path or
unreadable file.

Examples:
  tibxml get settings.xml "window[@id='main']/title"
  tibxml get settings.xml "window[@id='main']/@visible" --type bool
  tibxml get settings.xml autosave/minutes --type int --default 5
  tibxml get settings.xml "window[@id='main']/position" --type point)";

struct Get {
    std::string file;
    std::string path;
    std::vector<std::string> namespaces;
    std::string type = valueTypes().front().name;
    std::optional<std::string> fallback;
};

void printValue(std::string const& value, ValueType const& type) {
    if (type.isBinary) return print(value);
    printLine(value);
}

ExitStatus run(Get const& get) {
    ValueType const& type = valueType(get.type);
    WXmlDoc document = loadDocument(get.file);
    useNamespaces(document, get.namespaces);
    ValuePath const path = valuePath(get.path);
    WXmlValueAccessor const value = valueAt(nodeAt(document.GetRootNode(), path), path);
    std::optional<std::string> const read = type.read(value);
    if (!read && !get.fallback) throw absentValue(get.file, get.path, value, type);
    printValue(read ? *read : *get.fallback, type);
    return ExitStatus::found;
}

void addArguments(CLI::App& command, Get& get) {
    addFile(command, get.file);
    command.add_option("PATH", get.path, "An XPath 1.0 location path; the first node counts")
        ->option_text("REQUIRED")
        ->required();
    addTypeOption(command, get.type,
                  "What the value is read as: string (the default), bool, "
                  "int, int64, double, point, size, rect or binary");
    command
        .add_option("--default", get.fallback,
                    "What to print when nothing is there, or not of the type")
        ->option_text("VALUE");
    addNamespaceOption(command, get.namespaces);
}

} // namespace

void addGet(CLI::App& program, Task& task) {
    auto const get = std::make_shared<Get>();
    CLI::App& command = *program.add_subcommand("get", "Print one value, read as a type");
    addArguments(command, *get);
    command.footer(examples);
    command.callback([&task, get] { task = [get] { return run(*get); }; });
}

} // namespace tibxml::tool
