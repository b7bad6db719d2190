#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include <TibXml/WXmlStringMap.h>
#include <TibXml/WXmlValueAccessor.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Failure.h"
#include "Output.h"
#include "Select.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples =
    R"(The file holds <context name="..."> elements with <string nonTranslatableString="KEY"
locString="..."/> in them. Contexts and keys with an apostrophe are never found.
Status: 0 printed, 1 not found or not well-formed, 2 unreadable file.

Examples:
  tibxml strings german.xml menu open
  tibxml strings german.xml menu "Datei öffnen" --reverse)";

struct Strings {
    std::string file;
    std::string context;
    std::string key;
    bool isReverse = false;
};

// A map finds keys among the strings that were looked up before, so all of the context are. Their
// contexts are compared here, for a path could not hold every name.
void lookUpAll(WXmlStringMap const& map, WXmlDoc const& document, CString const& context) {
    CString found;
    for (WXmlNode const& string : selectAll(document.GetRootNode(), "context/string")) {
        if (string.GetParentNode().Attribute(L"@name").GetString(L"") != context) continue;
        CString const key = string.Attribute(L"@nonTranslatableString").GetString(L"");
        map.GetLocStringFromNTString(context, key, found);
    }
}

bool find(Strings const& strings, WXmlStringMap const& map, WXmlDoc const& document,
          CString& found) {
    CString const context = toWide(strings.context);
    CString const wanted = toWide(strings.key);
    if (!strings.isReverse) return map.GetLocStringFromNTString(context, wanted, found);
    lookUpAll(map, document, context);
    return map.GetNTStringFromLocString(context, wanted, found);
}

ExitStatus run(Strings const& strings) {
    // Loaded twice: the map would not say what is wrong with a file.
    WXmlDoc const document = loadDocument(strings.file);
    WXmlStringMap map;
    map.LoadFromString(document.SaveToString());
    CString found;
    if (!find(strings, map, document, found)) {
        throw failure(ExitStatus::notFound, strings.file + ": no '" + strings.key +
                                                "' in context '" + strings.context + "'");
    }
    printLine(toUtf8(found));
    return ExitStatus::found;
}

} // namespace

void addStrings(CLI::App& program, Task& task) {
    auto const strings = std::make_shared<Strings>();
    CLI::App& command =
        *program.add_subcommand("strings", "Print a localised string, or the key of one");
    addFile(command, strings->file);
    command.add_option("CONTEXT", strings->context, "The context")
        ->option_text("REQUIRED")
        ->required();
    command.add_option("KEY", strings->key, "The key; with --reverse, the localised string")
        ->option_text("REQUIRED")
        ->required();
    command.add_flag("--reverse", strings->isReverse,
                     "Print the smallest key of a localised string");
    command.footer(examples);
    command.callback([&task, strings] { task = [strings] { return run(*strings); }; });
}

} // namespace tibxml::tool
