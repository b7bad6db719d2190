#include "Documents.h"

#include <CLI/CLI.hpp>
#include <TibXml/EnginePtr.h>
#include <TibXml/WXmlSax.h>
#include <TibXml/platform/BStr.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Stream.h>
#include <TibXml/platform/Variant.h>

#include "Failure.h"
#include "InputFile.h"
#include "Output.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

std::string placeIn(IXMLDOMParseError& error) {
    LONG line = 0;
    LONG column = 0;
    error.get_line(&line);
    error.get_linepos(&column);
    return std::to_string(line) + ":" + std::to_string(column);
}

std::string reasonOf(IXMLDOMParseError& error) {
    _bstr_t reason;
    error.get_reason(reason.GetAddress());
    return toUtf8({reason, reason.length()});
}

Failure notWellFormed(std::string const& file, WXmlDocPtr const& document) {
    EnginePtr<IXMLDOMParseError> error;
    document->get_parseError(error.GetAddress());
    IXMLDOMParseError& known = *error.operator->();
    return {ExitStatus::notFound, file + ":" + placeIn(known) + ": " + reasonOf(known)};
}

void loadFromInput(WXmlDocPtr const& document, std::string const& file) {
    InputFile input{file};
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    HRESULT const result = document->load(_variant_t{&input}, &isLoaded);
    input.requireSuccess();
    if (FAILED(result)) _com_issue_errorex(result, document, IID_IXMLDOMDocument);
    if (isLoaded == VARIANT_FALSE) throw notWellFormed(file, document);
}

} // namespace

// Straight from the engine: what the library's own loading says is no more than whether it worked.
WXmlDocPtr newEngineDocument() {
    void* object = nullptr;
    HRESULT const result =
        CoCreateInstance(CLSID_DOMDocument60, nullptr, CLSCTX_ALL, IID_IXMLDOMDocument3, &object);
    if (FAILED(result)) _com_issue_error(result);
    WXmlDocPtr document{static_cast<IXMLDOMDocument3*>(object), false};
    OleRun(document);
    _bstr_t newParser{L"NewParser"}; // as the library sets it
    document->setProperty(newParser.GetBSTR(), _variant_t{true});
    return document;
}

WXmlDocPtr loadEngineDocument(std::string const& file) {
    WXmlDocPtr document = newEngineDocument();
    loadFromInput(document, file);
    return document;
}

WXmlDoc loadDocument(std::string const& file) {
    return WXmlDoc{loadEngineDocument(file)};
}

WXmlDocPtr engineDocumentFrom(CString const& text) {
    WXmlDocPtr document = newEngineDocument();
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    _bstr_t whole{text.GetString()};
    HRESULT const result = document->loadXML(whole.GetBSTR(), &isLoaded);
    if (FAILED(result)) _com_issue_errorex(result, document, IID_IXMLDOMDocument);
    return document;
}

WXmlDocPtr loadFromPath(std::string const& file, WhiteSpace whiteSpace) {
    WXmlDocPtr document = newEngineDocument();
    if (whiteSpace == WhiteSpace::preserved) document->put_preserveWhiteSpace(VARIANT_TRUE);
    // Tells what cannot be read from what is not well-formed, which the engine does not.
    loadFromInput(document, file);
    if (file == "-") return document;
    // A second time by its name, which streams do not have.
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    HRESULT const result = document->load(_variant_t{toWide(file)}, &isLoaded);
    if (FAILED(result)) _com_issue_errorex(result, document, IID_IXMLDOMDocument);
    if (isLoaded == VARIANT_FALSE) throw notWellFormed(file, document);
    return document;
}

namespace {

// "line:column: reason", as the engine leaves it behind.
std::string lastReason() {
    EnginePtr<IErrorInfo> info;
    _bstr_t text;
    if (GetErrorInfo(0, info.GetAddress()) == S_OK) info->GetDescription(text.GetAddress());
    return toUtf8({text, text.length()});
}

} // namespace

void streamDocument(WXmlSax& sax, InputFile& input, std::string const& name) {
    requireRead(sax.ParseIStream(&input), input, name);
}

void requireRead(bool isDone, InputFile const& input, std::string const& name) {
    input.requireSuccess();
    if (isDone) return;
    finishOutput(); // what was printed comes before the complaint about what follows it
    throw Failure{ExitStatus::notFound, name + ":" + lastReason()};
}

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
