#include "LoadDocument.h"

#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/VariantT.h>

#include "Failure.h"
#include "InputFile.h"
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

} // namespace tibxml::tool
