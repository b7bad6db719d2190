#include "Documents.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <system_error>

#include <CLI/CLI.hpp>
#include <TibXml/EnginePtr.h>
#include <TibXml/WXmlSax.h>
#include <TibXml/platform/BStr.h>
#include <TibXml/platform/ComError.h>
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

// A file that cannot be read is a reason of its own, and the system knows it better.
void requireReadable(std::string const& file) {
    InputFile input{file};
    std::array<char, 16384> piece; // NOLINT(*-member-init): what is read is not looked at
    while (input.Read(piece.data(), ULONG{piece.size()}, nullptr) == S_OK) {
    }
    input.requireSuccess();
}

// Without an error in the document it was the engine that failed, and it lacks nothing but memory.
EnginePtr<IXMLDOMParseError> errorIn(WXmlDoc const& document) {
    EnginePtr<IXMLDOMParseError> error;
    LONG code = 0;
    WXmlDocPtr const engine = document.EngineDocument();
    if (engine) engine->get_parseError(error.GetAddress());
    if (error) error->get_errorCode(&code);
    if (code == 0) _com_issue_error(E_OUTOFMEMORY);
    return error;
}

bool isUnreadable(IXMLDOMParseError& error) {
    LONG code = 0;
    error.get_errorCode(&code);
    return static_cast<std::uint32_t>(code) == 0xC00CE587;
}

// Throws why a load failed.
[[noreturn]] void complainAbout(WXmlDoc const& document, std::string const& file) {
    auto const error = errorIn(document);
    IXMLDOMParseError& known = *error.GetInterfacePtr();
    if (file != "-" && isUnreadable(known)) requireReadable(file);
    throw Failure{ExitStatus::notFound, file + ":" + placeIn(known) + ": " + reasonOf(known)};
}

void loadFromInput(WXmlDoc& document, std::string const& file) {
    InputFile input{file};
    bool const isLoaded = document.Load(&input);
    input.requireSuccess();
    if (!isLoaded) complainAbout(document, file);
}

} // namespace

WXmlDoc loadDocument(std::string const& file) {
    WXmlDoc document;
    loadFromInput(document, file);
    return document;
}

WXmlDoc documentFrom(CString const& text) {
    WXmlDoc document;
    if (!document.LoadFromString(text)) complainAbout(document, "-");
    return document;
}

WXmlDoc loadFromPath(std::string const& file, WhiteSpace whiteSpace) {
    WXmlDoc document{whiteSpace == WhiteSpace::preserved};
    if (file == "-") {
        loadFromInput(document, file);
    } else {
        // Names that the engine alone understands, such as URLs, are not files for this program.
        std::error_code unknown;
        if (!std::filesystem::exists(file, unknown)) requireReadable(file);
        if (!document.Load(toWide(file))) complainAbout(document, file);
    }
    return document;
}

namespace {

// "line:column: reason", as the engine leaves it.
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

// Straight to the engine, which says why it fails.
void save(WXmlDoc const& document, VARIANT const& destination) {
    WXmlDocPtr const engine = document.EngineDocument();
    HRESULT const result = engine->save(destination);
    if (FAILED(result)) _com_issue_errorex(result, engine, IID_IXMLDOMDocument);
}

// By way of memory: the output has its own words for what goes wrong with it.
void saveToOutput(WXmlDoc const& document) {
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

void saveDocument(WXmlDoc const& document, std::string const& file) {
    if (file == "-") return saveToOutput(document);
    try {
        save(document, _variant_t{toWide(file).GetString()});
    } catch (_com_error const& error) {
        if (error.Error() == E_OUTOFMEMORY) throw;
        throw failure(ExitStatus::failed, file + ": " + describe(error));
    }
}

} // namespace tibxml::tool
