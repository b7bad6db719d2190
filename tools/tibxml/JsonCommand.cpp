#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <TibXml/JsonConversion.h>
#include <TibXml/tibutils/Json.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Failure.h"
#include "Output.h"
#include "Select.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples =
    R"(Elements and attributes only: texts, comments and processing instructions are left out.
Status: 0 printed, 1 nothing there or not well-formed, 2 bad path or unreadable file.

Examples:
  tibxml json settings.xml --pretty
  tibxml json settings.xml "window[@id='main']"
  tibxml json settings.xml | tibxml xml)";

struct Json {
    std::string file;
    std::string path = ".";
    std::vector<std::string> namespaces;
    bool isPretty = false;
};

WXmlNode elementAt(WXmlNode const& root, Json const& json) {
    WXmlNode element = selectFirst(root, json.path);
    if (!element.IsValid())
        throw failure(ExitStatus::notFound, json.file + ": nothing at " + json.path);
    if (!element.DoesNodeExist(L"self::*"))
        throw failure(ExitStatus::notFound, json.file + ": " + json.path + " is not an element");
    return element;
}

ExitStatus run(Json const& json) {
    WXmlDoc document = loadDocument(json.file);
    useNamespaces(document, json.namespaces);
    TibUtils::Variant value;
    JsonConvertFromXml(elementAt(document.GetRootNode(), json), value);
    printLine(TibUtils::Json::Write(value, json.isPretty ? 2 : 0));
    return ExitStatus::found;
}

} // namespace

void addJson(CLI::App& program, Task& task) {
    auto const json = std::make_shared<Json>();
    CLI::App& command = *program.add_subcommand("json", "Print an element as JSON");
    addFile(command, json->file);
    command
        .add_option("PATH", json->path,
                    "An XPath 1.0 location path to the element; without it, the root")
        ->option_text(" ");
    addNamespaceOption(command, json->namespaces);
    command.add_flag("--pretty", json->isPretty, "Lay the text out on several lines");
    command.footer(examples);
    command.callback([&task, json] { task = [json] { return run(*json); }; });
}

} // namespace tibxml::tool
