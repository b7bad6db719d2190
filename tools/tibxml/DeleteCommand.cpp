#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <TibXml/WXmlValueAccessor.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Failure.h"
#include "Select.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples =
    R"help(All that the path selects is deleted, with all that is in it.
The path begins at the root element, unless it begins with "/".
FILE is replaced as a whole or not at all.
Status: 0 deleted, 1 nothing there or not well-formed, 2 bad path, or a file that cannot be
read or written.

Examples:
  tibxml delete settings.xml "recent/file[position()>10]"
  tibxml delete settings.xml "window[@id='main']/@visible"
  tibxml delete settings.xml "//comment()" -o bare.xml)help";

struct Delete {
    std::string file;
    std::string path;
    std::optional<std::string> output;
    std::vector<std::string> namespaces;
};

[[noreturn]] void refuse(Delete const& wanted, std::string const& what) {
    throw failure(ExitStatus::failed, wanted.file + ": " + what + " cannot be deleted");
}

// Whether there was one.
bool deleteAttribute(WXmlNode const& element, CString const& name, Delete const& wanted) {
    WXmlValueAccessor attribute = element.Attribute(name);
    if (!attribute.Exists()) return false;
    attribute.Delete();
    if (attribute.Exists()) refuse(wanted, toUtf8(name));
    return true;
}

// An attribute has an element, which is not a parent; the document has neither.
void deleteNode(WXmlNode node, Delete const& wanted) {
    if (node.GetParentNode().IsValid()) return node.Prune();
    WXmlNode const element = node.GetNodeNoThrow(L"..");
    if (!element.IsValid()) refuse(wanted, "the document");
    deleteAttribute(element, CString{L"@"} + node.GetName(), wanted);
}

std::size_t deleteNodes(WXmlNode const& root, Delete const& wanted) {
    std::size_t count = 0;
    for (WXmlNode const& node : selectAll(root, wanted.path)) {
        deleteNode(node, wanted);
        ++count;
    }
    return count;
}

std::size_t deleteAttributes(WXmlNode const& root, ValuePath const& path, Delete const& wanted) {
    CString const name = toWide(path.attribute);
    if (path.node.empty()) return deleteAttribute(root, name, wanted) ? 1 : 0;
    std::size_t count = 0;
    for (WXmlNode const& element : selectAll(root, path.node))
        if (deleteAttribute(element, name, wanted)) ++count;
    return count;
}

ExitStatus run(Delete const& wanted) {
    WXmlDoc document = loadDocument(wanted.file);
    useNamespaces(document, wanted.namespaces);
    WXmlNode const root = document.GetRootNode();
    ValuePath const path = valuePath(wanted.path);
    std::size_t const count =
        path.attribute.empty() ? deleteNodes(root, wanted) : deleteAttributes(root, path, wanted);
    if (count == 0)
        throw failure(ExitStatus::notFound, wanted.file + ": nothing at " + wanted.path);
    if (!document.IsLoaded()) refuse(wanted, "the root element");
    saveDocument(document, wanted.output.value_or(wanted.file));
    return ExitStatus::found;
}

} // namespace

void addDelete(CLI::App& program, Task& task) {
    auto const wanted = std::make_shared<Delete>();
    CLI::App& command = *program.add_subcommand("delete", "Delete the nodes that a path selects");
    addFile(command, wanted->file);
    command.add_option("PATH", wanted->path, "An XPath 1.0 location path")
        ->option_text("REQUIRED")
        ->required();
    addOutputOption(command, wanted->output);
    addNamespaceOption(command, wanted->namespaces);
    command.footer(examples);
    command.callback([&task, wanted] { task = [wanted] { return run(*wanted); }; });
}

} // namespace tibxml::tool
