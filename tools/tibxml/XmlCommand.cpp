#include <array>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include <TibXml/JsonConversion.h>
#include <TibXml/tibutils/Json.h>

#include "Commands.h"
#include "Failure.h"
#include "InputFile.h"
#include "Output.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples =
    R"(The JSON text is an element as "tibxml json" prints it: an object with "tag" and, where there are
any, "attributes" and "children". Names are taken as they are.
Status: 0 printed, 1 not JSON or no element, 2 unreadable file.

Examples:
  tibxml xml settings.json
  tibxml json settings.xml | tibxml xml)";

std::string contentOf(std::string const& file) {
    InputFile input{file};
    std::string content;
    std::array<char, 1 << 16> buffer{};
    ULONG got = 0;
    do {
        input.Read(buffer.data(), static_cast<ULONG>(buffer.size()), &got);
        content.append(buffer.data(), got);
    } while (got == buffer.size());
    input.requireSuccess();
    return content;
}

TibUtils::Variant parse(std::string const& file) {
    try {
        return TibUtils::Json::Parse(contentOf(file));
    } catch (TibUtils::Json::ParseError const& error) {
        std::string const place =
            std::to_string(error.GetLine()) + ":" + std::to_string(error.GetColumn());
        throw Failure{ExitStatus::notFound, file + ":" + place + ": " + error.GetReason()};
    }
}

ExitStatus run(std::string const& file) {
    CString xml;
    if (!JsonConvertToXml(parse(file), xml))
        throw failure(ExitStatus::notFound, file + ": not an object with a \"tag\"");
    printLine(toUtf8(xml));
    return ExitStatus::found;
}

} // namespace

void addXml(CLI::App& program, Task& task) {
    auto const file = std::make_shared<std::string>("-");
    CLI::App& command = *program.add_subcommand("xml", "Print the XML that a JSON text describes");
    command.add_option("FILE", *file, "The JSON file; - or none is the standard input")
        ->option_text(" ");
    command.footer(examples);
    command.callback([&task, file] { task = [file] { return run(*file); }; });
}

} // namespace tibxml::tool
