#include <array>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include <TibXml/platform/ComError.h>
#include <TibXml/platform/Stream.h>
#include <TibXml/platform/Variant.h>

#include "Arguments.h"
#include "Commands.h"
#include "Documents.h"
#include "Failure.h"
#include "Output.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

constexpr char const* examples = R"(The stylesheet may read local files, relative to itself.
Status: 0 transformed, 1 a file is not well-formed, 2 unreadable file, bad stylesheet, or the
result cannot be written.

Examples:
  tibxml transform settings.xml report.xsl
  tibxml transform settings.xml upgrade.xsl -o settings.xml)";

struct Transform {
    std::string file;
    std::string stylesheet;
    std::string output;
};

void require(HRESULT result, IUnknown* object, REFIID iid) {
    if (FAILED(result)) _com_issue_errorex(result, object, iid);
}

void allowDocumentFunction(WXmlDocPtr const& stylesheet) {
    _bstr_t name{L"AllowDocumentFunction"};
    require(stylesheet->setProperty(name.GetBSTR(), _variant_t{true}), stylesheet,
            IID_IXMLDOMDocument2);
}

// The document becomes its own result.
WXmlDocPtr resultOf(Transform const& transform) {
    WXmlDocPtr document = loadDocument(transform.file).EngineDocument();
    WXmlDocPtr const stylesheet =
        loadFromPath(transform.stylesheet, WhiteSpace::preserved).EngineDocument();
    try {
        allowDocumentFunction(stylesheet);
        require(document->transformNodeToObject(stylesheet,
                                                _variant_t{static_cast<IUnknown*>(document)}),
                document, IID_IXMLDOMNode);
        return document;
    } catch (_com_error const& error) {
        if (error.Error() == E_OUTOFMEMORY) throw;
        throw failure(ExitStatus::failed, transform.stylesheet + ": " + describe(error));
    }
}

void save(WXmlDocPtr const& document, _variant_t const& destination) {
    require(document->save(destination), document, IID_IXMLDOMDocument);
}

void printDocument(WXmlDocPtr const& document) {
    EnginePtr<IStream> const stream{SHCreateMemStream(nullptr, 0), false};
    save(document, _variant_t{static_cast<IUnknown*>(stream)});
    LARGE_INTEGER start{};
    require(stream->Seek(start, STREAM_SEEK_SET, nullptr), stream, IID_IStream);
    std::array<char, 16384> buffer{};
    ULONG count = 0;
    while (SUCCEEDED(stream->Read(buffer.data(), ULONG{buffer.size()}, &count)) && count != 0)
        print({buffer.data(), count});
}

ExitStatus run(Transform const& transform) {
    WXmlDocPtr const result = resultOf(transform);
    if (transform.output.empty()) {
        printDocument(result);
        return ExitStatus::found;
    }
    try {
        save(result, _variant_t{toWide(transform.output)});
    } catch (_com_error const& error) {
        throw failure(ExitStatus::failed, transform.output + ": " + describe(error));
    }
    return ExitStatus::found;
}

} // namespace

void addTransform(CLI::App& program, Task& task) {
    auto const transform = std::make_shared<Transform>();
    CLI::App& command = *program.add_subcommand("transform", "Transform a file by a stylesheet");
    addFile(command, transform->file);
    command.add_option("STYLESHEET", transform->stylesheet, "An XSLT 1.0 stylesheet")
        ->option_text("REQUIRED")
        ->required();
    command
        .add_option("-o,--output", transform->output,
                    "Where to write the result, instead of printing it")
        ->option_text("OUT");
    command.footer(examples);
    command.callback([&task, transform] { task = [transform] { return run(*transform); }; });
}

} // namespace tibxml::tool
