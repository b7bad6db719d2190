#include "SaveDocument.h"

#include <CLI/CLI.hpp>

#include <TibXml/platform/ComError.h>
#include <TibXml/platform/Stream.h>
#include <TibXml/platform/VariantT.h>

#include "EngineError.h"
#include "Failure.h"
#include "Output.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

void save(WXmlDocPtr const& document, VARIANT const& destination) {
    HRESULT const result = document->save(destination);
    if (FAILED(result)) _com_issue_errorex(result, document, IID_IXMLDOMDocument);
}

// By way of memory: the output has its own words for what goes wrong with it.
void saveToOutput(WXmlDocPtr const& document) {
    EnginePtr<IStream> const stream{SHCreateMemStream(nullptr, 0), false};
    save(document, _variant_t{stream.GetInterfacePtr()});
    STATSTG statistics{};
    stream->Stat(&statistics, STATFLAG_NONAME);
    std::string bytes(static_cast<std::size_t>(statistics.cbSize.QuadPart), '\0');
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    print(bytes);
}

} // namespace

void addOutputOption(CLI::App& command, std::optional<std::string>& output) {
    command
        .add_option("-o,--output", output,
                    "Where the result goes instead of FILE; - is the standard output")
        ->option_text("FILE");
}

void saveDocument(WXmlDocPtr const& document, std::string const& file) {
    if (file == "-") return saveToOutput(document);
    try {
        save(document, _variant_t{toWide(file).GetString()});
    } catch (_com_error const& error) {
        if (error.Error() == E_OUTOFMEMORY) throw;
        throw failure(ExitStatus::failed, file + ": " + describe(error));
    }
}

} // namespace tibxml::tool
