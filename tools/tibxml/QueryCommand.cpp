#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <TibXml/WXmlValueAccessor.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Output.h"
#include "Select.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples = R"(The path begins at the root element, unless it begins with "/".
Status: 0 found, 1 nothing found or not well-formed, 2 bad path or unreadable file.

Examples:
  tibxml query settings.xml "window[@visible='true']"
  tibxml query settings.xml "//file/@opened" --text
  tibxml query settings.xml "//file" --count
  tibxml query drawing.svg "//s:path" --count --ns "xmlns:s='http://www.w3.org/2000/svg'")";

struct Query {
    std::string file;
    std::string path;
    std::vector<std::string> namespaces;
    bool asText = false;
    bool asMarkup = false;
    bool asCount = false;
};

void printNode(Query const& query, WXmlNode const& node) {
    if (query.asText) return printLine(toUtf8(node.Value().GetString(L"")));
    printLines(toUtf8(node.GetXML()));
}

void printNodes(Query const& query, WXmlNodeList const& nodes) {
    if (query.asCount) return printLine(std::to_string(nodes.size()));
    for (WXmlNode const& node : nodes)
        printNode(query, node);
}

ExitStatus run(Query const& query) {
    WXmlDoc document = loadDocument(query.file);
    useNamespaces(document, query.namespaces);
    WXmlNodeList const nodes = selectAll(document.GetRootNode(), query.path);
    printNodes(query, nodes);
    return nodes.size() > 0 ? ExitStatus::found : ExitStatus::notFound;
}

// The blank as the text of an option keeps what it excludes out of the help.
CLI::Option* addForm(CLI::App& command, char const* name, bool& isWanted, char const* help) {
    return command.add_flag(name, isWanted, help)->option_text(" ");
}

void addForms(CLI::App& command, Query& query) {
    CLI::Option* const xml =
        addForm(command, "--xml", query.asMarkup, "Print the markup of each node (the default)");
    CLI::Option* const text =
        addForm(command, "--text", query.asText, "Print the text of each node");
    CLI::Option* const count =
        addForm(command, "--count", query.asCount, "Print just how many nodes there are");
    text->excludes(xml);
    count->excludes(xml)->excludes(text);
}

} // namespace

void addQuery(CLI::App& program, Task& task) {
    auto const query = std::make_shared<Query>();
    CLI::App& command = *program.add_subcommand("query", "Print the nodes that a path selects");
    addFile(command, query->file);
    command.add_option("PATH", query->path, "An XPath 1.0 location path")
        ->option_text("REQUIRED")
        ->required();
    addNamespaceOption(command, query->namespaces);
    addForms(command, *query);
    command.footer(examples);
    command.callback([&task, query] { task = [query] { return run(*query); }; });
}

} // namespace tibxml::tool
