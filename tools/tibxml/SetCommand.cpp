#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Failure.h"
#include "Select.h"
#include "Text.h"
#include "ValueType.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples = R"(The path begins at the root element, unless it begins with "/".
It may end in the name of an attribute: window/@visible
What is missing on the way is made. FILE is replaced as a whole or not at all.
Status: 0 written, 1 not well-formed, 2 bad path or value, or a file that cannot be read
or written.

Examples:
  tibxml set settings.xml autosave/minutes 15 --type int
  tibxml set settings.xml "window[@id='tools']/@visible" true
  tibxml set settings.xml "window[@id='main']/position" 40,40 --type point -o moved.xml
  tibxml set settings.xml icon icon.png --type binary)";

struct Set {
    std::string file;
    std::string path;
    std::string value;
    std::string type = valueTypes().front().name;
    std::optional<std::string> output;
    std::vector<std::string> namespaces;
};

// The library makes what is missing below a node, and its first step must not be the "/" before the
// root. Its predicates need single quotes.
WXPath belowRoot(WXmlNode const& root, std::string const& path) {
    WXPath whole{rebuilt(WXPath{toWide(path)})};
    bool const isAbsolute = path.starts_with('/') && !path.starts_with("//");
    if (!isAbsolute || root.GetNodeNoThrow(whole.GetRoot()) != root) return whole;
    return whole.GetChildOfRoot();
}

Failure notMade(Set const& set) {
    return failure(ExitStatus::failed, set.file + ": cannot make " + set.path);
}

WXmlNode make(WXmlNode root, Set const& set, ValuePath const& path) {
    WXmlNode made = root.EnsureDescendantExists(belowRoot(root, path.node));
    if (!made.IsValid()) throw notMade(set);
    return made;
}

// What was made must be what the path selects: otherwise the same call would make it once more.
void writeAt(WXmlNode const& root, Set const& set) {
    ValuePath const path = valuePath(set.path);
    WXmlNode const found = nodeAt(root, path);
    WXmlNode const node = found.IsValid() ? found : make(root, set, path);
    WXmlValueAccessor value = valueAt(node, path);
    writeAs(valueType(set.type), value, set.value, set.path);
    if (!found.IsValid() && nodeAt(root, path) != node) throw notMade(set);
}

ExitStatus run(Set const& set) {
    WXmlDoc document = loadDocument(set.file);
    useNamespaces(document, set.namespaces);
    writeAt(document.GetRootNode(), set);
    saveDocument(document, set.output.value_or(set.file));
    return ExitStatus::found;
}

void addArguments(CLI::App& command, Set& set) {
    addFile(command, set.file);
    command.add_option("PATH", set.path, "An XPath 1.0 location path; the first node counts")
        ->option_text("REQUIRED")
        ->required();
    command.add_option("VALUE", set.value, "The value as \"tibxml get\" prints it")
        ->option_text("REQUIRED")
        ->required();
    addTypeOption(command, set.type,
                  "What the value is: string (the default), bool, int, int64,\n"
                  "double, point, size, rect, or binary, which takes the bytes\n"
                  "of the file VALUE");
    addOutputOption(command, set.output);
    addNamespaceOption(command, set.namespaces);
}

} // namespace

void addSet(CLI::App& program, Task& task) {
    auto const set = std::make_shared<Set>();
    CLI::App& command = *program.add_subcommand("set", "Write one value");
    addArguments(command, *set);
    command.footer(examples);
    command.callback([&task, set] { task = [set] { return run(*set); }; });
}

} // namespace tibxml::tool
