#include "TestMode.h"

#include <TibXml/EngineCall.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Variant.h>
#include <TibXml/tibutils/Stream.h>

#include <utility>

using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::quietly;

namespace {

/// Makes a document of the engine; `document` stays empty when that fails.
HRESULT createEngineDocument(WXmlDocPtr& document) {
    EnginePtr<IUnknown> object;
    void* made = nullptr;
    HRESULT code = CoCreateInstance(CLSID_DOMDocument60, nullptr, CLSCTX_ALL, IID_IUnknown, &made);
    if (FAILED(code)) return code;
    object.Attach(static_cast<IUnknown*>(made));
    code = OleRun(object);
    if (FAILED(code)) return code;
    void* found = nullptr;
    code = object->QueryInterface(IID_IXMLDOMDocument3, &found);
    if (SUCCEEDED(code)) document.Attach(static_cast<IXMLDOMDocument3*>(found));
    return code;
}

/// The engine's parser is told by an integer with all bits set, not by a truth value: callers'
/// engines are known to take just that.
void useNewParser(WXmlDocPtr const& document) {
    constexpr short allBits = -1;
    invoke(document, &IXMLDOMDocument2::setProperty, EngineString{L"NewParser"}.get(),
           _variant_t{allBits});
}

bool load(WXmlDocPtr const& document, _variant_t const& source) {
    VARIANT_BOOL isSuccessful = VARIANT_FALSE;
    invoke(document, &IXMLDOMDocument::load, source, &isSuccessful);
    if (isSuccessful != VARIANT_FALSE) return true;
    // Settles the flag for the whole process at the first failure; the answer does not matter yet.
    static_cast<void>(tibxml::dom::isTestMode());
    return false;
}

bool save(WXmlDocPtr const& document, _variant_t const& destination) {
    // Success codes other than this one mean that something is missing from what was written.
    return invoke(document, &IXMLDOMDocument::save, destination) == S_OK;
}

} // namespace

bool WXmlDoc::CreateDocument() noexcept {
    ReleaseDocument();
    auto const create = [this] {
        WXmlDocPtr document;
        HRESULT const created = createEngineDocument(document);
        slot.Keep(std::move(document));
        useNewParser(Document());
        if (preserveWhiteSpace) Document()->put_preserveWhiteSpace(VARIANT_TRUE);
        return SUCCEEDED(created);
    };
    if (quietly(false, create)) return true;
    ReleaseDocument();
    return false;
}

bool WXmlDoc::Load(wchar_t const* path) noexcept {
    return CreateDocument() && quietly(false, [&] { return load(Document(), path); });
}

bool WXmlDoc::Load(IStream* stream) noexcept {
    if (stream == nullptr) return false;
    return CreateDocument() && quietly(false, [&] { return load(Document(), stream); });
}

bool WXmlDoc::Load(TibUtils::Stream stream) noexcept {
    // The caller may keep the argument alive longer than this call.
    TibUtils::Stream const source{std::move(stream)};
    return Load(static_cast<IStream*>(source));
}

bool WXmlDoc::LoadFromString(wchar_t const* text) noexcept {
    return CreateDocument() && quietly(false, [&] {
               VARIANT_BOOL isSuccessful = VARIANT_FALSE;
               invoke(Document(), &IXMLDOMDocument::loadXML, EngineString{text}.get(),
                      &isSuccessful);
               return isSuccessful != VARIANT_FALSE;
           });
}

WXmlDoc WXmlDoc::CreateFromString(wchar_t const* text) {
    WXmlDoc document{false};
    document.LoadFromString(text);
    return document;
}

WXmlDoc WXmlDoc::CreateFromFile(wchar_t const* path) {
    WXmlDoc document{false};
    document.Load(path);
    return document;
}

WXmlDoc WXmlDoc::CreateFromStream(IStream* stream) {
    WXmlDoc document{false};
    document.Load(stream);
    return document;
}

bool WXmlDoc::Save(wchar_t const* path) const noexcept {
    return Document() && quietly(false, [&] { return save(Document(), path); });
}

bool WXmlDoc::Save(IStream* stream) const noexcept {
    return stream != nullptr && Document() &&
           quietly(false, [&] { return save(Document(), stream); });
}
