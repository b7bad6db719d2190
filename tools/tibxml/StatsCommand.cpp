#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include <TibXml/WXmlSax.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Output.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples = R"(Counts by streaming, so files of any size need little memory.
depth       elements inside each other
text bytes  of all text within the root element, as UTF-8, white space included
Status: 0 well-formed, 1 not well-formed, 2 unreadable file.

Examples:
  tibxml stats settings.xml
  zcat dump.xml.gz | tibxml stats -)";

std::uint64_t utf8Size(WXmlSaxText const& text) noexcept {
    std::uint64_t size = 0;
    for (wchar_t const c : std::wstring_view{text.text, static_cast<std::size_t>(text.length)}) {
        auto const code = static_cast<char32_t>(c);
        size += code < 0x80 ? 1 : code < 0x800 ? 2 : code < 0x10000 ? 3 : 4;
    }
    return size;
}

class Stats {
public:
    explicit Stats(std::string const& file) : input_{file}, file_{file} {}

    void count() {
        Progress progress; // gone before anything else is printed
        WXmlSax sax;
        auto start = [&](auto const*, auto const* attributes) {
            startElement(attributes->size());
            progress.show(input_.position(), elements_);
            return true;
        };
        auto end = [this](auto const*) { return depth_-- > 0; };
        auto text = [this](WXmlSaxText const* piece) {
            textBytes_ += utf8Size(*piece);
            return true;
        };
        sax.OnStartElement.Bind(start);
        sax.OnEndElement.Bind(end);
        sax.OnCharacters.Bind(text);
        streamDocument(sax, input_, file_);
    }

    void print() const {
        printLine("elements    " + std::to_string(elements_));
        printLine("attributes  " + std::to_string(attributes_));
        printLine("depth       " + std::to_string(deepest_));
        printLine("text bytes  " + std::to_string(textBytes_));
    }

private:
    void startElement(std::size_t attributes) {
        ++elements_;
        attributes_ += attributes;
        deepest_ = std::max(deepest_, ++depth_);
    }

    InputFile input_;
    std::string const& file_;
    std::uint64_t elements_ = 0;
    std::uint64_t attributes_ = 0;
    std::uint64_t textBytes_ = 0;
    int depth_ = 0;
    int deepest_ = 0;
};

ExitStatus run(std::string const& file) {
    Stats stats{file};
    stats.count();
    stats.print();
    return ExitStatus::found;
}

} // namespace

void addStats(CLI::App& program, Task& task) {
    auto const file = std::make_shared<std::string>();
    CLI::App& command = *program.add_subcommand("stats", "Count what is in a file of any size");
    addFile(command, *file);
    command.footer(examples);
    command.callback([&task, file] { task = [file] { return run(*file); }; });
}

} // namespace tibxml::tool
