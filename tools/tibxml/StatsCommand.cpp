#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include <TibXml/EnginePtr.h>
#include <TibXml/WXmlSax.h>
#include <TibXml/engine/ISAXCounter.h>
#include <TibXml/engine/ISAXXMLReader.h>
#include <TibXml/platform/ComRuntime.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "InputFile.h"
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
        input_.beforeRead = [&] { progress.show(input_.position(), counts_.elements); };
        EnginePtr<ISAXCounter> const counter = createCounter();
        if (counter) {
            VARIANT input{};
            input.vt = VT_UNKNOWN;
            input.punkVal = &input_;
            requireRead(SUCCEEDED(counter->count(input, &counts_)), input_, file_);
        } else {
            countEvents();
        }
    }

    void print() const {
        printLine("elements    " + std::to_string(counts_.elements));
        printLine("attributes  " + std::to_string(counts_.attributes));
        printLine("depth       " + std::to_string(counts_.depth));
        printLine("text bytes  " + std::to_string(counts_.textBytes));
    }

private:
    // Null where the engine is another one, which has no such thing.
    static EnginePtr<ISAXCounter> createCounter() {
        void* made = nullptr;
        if (FAILED(CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL, IID_ISAXCounter,
                                    &made)))
            return {};
        return EnginePtr<ISAXCounter>{static_cast<ISAXCounter*>(made), false};
    }

    void countEvents() {
        WXmlSax sax;
        ULONG depth = 0;
        auto start = [&](auto const*, auto const* attributes) {
            ++counts_.elements;
            counts_.attributes += attributes->size();
            counts_.depth = std::max(counts_.depth, ++depth);
            return true;
        };
        auto end = [&](auto const*) { return depth-- > 0; };
        auto text = [&](WXmlSaxText const* piece) {
            counts_.textBytes += utf8Size(*piece);
            return true;
        };
        sax.OnStartElement.Bind(start);
        sax.OnEndElement.Bind(end);
        sax.OnCharacters.Bind(text);
        streamDocument(sax, input_, file_);
    }

    InputFile input_;
    std::string const& file_;
    SAXCounts counts_{};
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
