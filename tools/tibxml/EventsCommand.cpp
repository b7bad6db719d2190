#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include <TibXml/WXmlSax.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Output.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples = R"(One line for each event: start and end of the document and of
the elements, and text, with line ends as \n, returns as \r, tabs as \t and backslashes as \\.
Elements and attributes have their local names. White space is text like any other.
Status: 0 well-formed, 1 not well-formed, 2 unreadable file.

Examples:
  tibxml events settings.xml
  curl -s https://example.org/feed | tibxml events - | grep -c '^start entry')";

std::string utf8Of(wchar_t const* text, int length) {
    return toUtf8({text, static_cast<std::size_t>(length)});
}

// One line, from which the text can be got back.
std::string escaped(std::string const& text) {
    std::string line;
    for (char const c : text) {
        switch (c) {
        case '\n': line += "\\n"; break;
        case '\r': line += "\\r"; break;
        case '\t': line += "\\t"; break;
        case '\\': line += "\\\\"; break;
        default: line += c;
        }
    }
    return line;
}

bool printDocumentStart(void* /*context*/) {
    printLine("start of document");
    return true;
}

bool printDocumentEnd(void* /*context*/) {
    printLine("end of document");
    return true;
}

bool printElementStart(void* /*context*/, WXmlSaxText const* name,
                       std::vector<WXmlSaxAttribute> const* attributes) {
    std::string line = "start " + utf8Of(name->text, name->length);
    for (WXmlSaxAttribute const& attribute : *attributes) {
        line += " " + utf8Of(attribute.name, attribute.nameLength) + "=\"" +
                escaped(utf8Of(attribute.value, attribute.valueLength)) + "\"";
    }
    printLine(line);
    return true;
}

bool printElementEnd(void* /*context*/, WXmlSaxText const* name) {
    printLine("end " + utf8Of(name->text, name->length));
    return true;
}

bool printText(void* /*context*/, WXmlSaxText const* text) {
    printLine("text " + escaped(utf8Of(text->text, text->length)));
    return true;
}

ExitStatus run(std::string const& file) {
    InputFile input{file};
    WXmlSax sax;
    sax.OnStartDocument.function = printDocumentStart;
    sax.OnEndDocument.function = printDocumentEnd;
    sax.OnStartElement.function = printElementStart;
    sax.OnEndElement.function = printElementEnd;
    sax.OnCharacters.function = printText;
    streamDocument(sax, input, file);
    return ExitStatus::found;
}

} // namespace

void addEvents(CLI::App& program, Task& task) {
    auto const file = std::make_shared<std::string>();
    CLI::App& command = *program.add_subcommand("events", "Print what is in a file as events");
    addFile(command, *file);
    command.footer(examples);
    command.callback([&task, file] { task = [file] { return run(*file); }; });
}

} // namespace tibxml::tool
