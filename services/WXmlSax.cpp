#include <TibXml/WXmlSax.h>

#include <TibXml/engine/ISAXXMLReader.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Variant.h>
#include <calls/EngineCall.h>
#include <services/WXmlSaxImpl.h>

#include <exception>
#include <utility>

namespace {

/// The attributes as records. A failure of the engine's own is a failing code.
HRESULT fill(std::vector<WXmlSaxAttribute>& records, ISAXAttributes& attributes) {
    int count = 0;
    HRESULT result = attributes.getLength(&count);
    records.resize(SUCCEEDED(result) ? static_cast<std::size_t>(count) : 0);
    for (int i = 0; i != count && SUCCEEDED(result); ++i) {
        WXmlSaxAttribute& record = records[static_cast<std::size_t>(i)];
        result = attributes.getLocalName(i, &record.name, &record.nameLength);
        if (SUCCEEDED(result)) result = attributes.getValue(i, &record.value, &record.valueLength);
    }
    return result;
}

/// Stands in for the caller's stream in front of the engine, through which no exception may pass:
/// one that is thrown by a read ends the parse and is thrown again when that is over.
class GuardedStream final : public tibxml::platform::ComObject<ISequentialStream> {
public:
    explicit GuardedStream(IStream* stream) noexcept : stream_{stream} {}

    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept override {
        try {
            return stream_->Read(buffer, count, done);
        } catch (...) {
            exception_ = std::current_exception();
            return STG_E_READFAULT;
        }
    }

    HRESULT Write(void const* /*buffer*/, ULONG /*count*/, ULONG* /*done*/) noexcept override {
        return STG_E_ACCESSDENIED;
    }

    void RethrowException() {
        if (exception_) std::rethrow_exception(std::exchange(exception_, nullptr));
    }

private:
    IStream* stream_;
    std::exception_ptr exception_;
};

/// One parse by a reader of its own, which is gone before the exception of a callback goes on.
template <class Start>
bool parse(WXmlSaxImpl* implementation, Start start) {
    // A callback may destroy the object that the handler belongs to.
    EnginePtr<WXmlSaxImpl> const handler{implementation};
    EnginePtr<ISAXXMLReader> reader;
    if (FAILED(tibxml::engine::createObject(CLSID_SAXXMLReader60, reader))) return false;
    reader->putContentHandler(handler);
    HRESULT const result = start(*reader.operator->());
    reader.Release();
    handler->RethrowException();
    return SUCCEEDED(result);
}

} // namespace

void WXmlSaxImpl::RethrowException() {
    if (exception_) std::rethrow_exception(std::exchange(exception_, nullptr));
}

/// No exception may pass through the engine: the parse is stopped instead, and the code that
/// started it gets the exception afterwards.
template <class Action>
HRESULT WXmlSaxImpl::Guarded(Action action) noexcept {
    try {
        return action();
    } catch (...) {
        exception_ = std::current_exception();
        return E_FAIL;
    }
}

template <class... Arguments, class... Given>
HRESULT WXmlSaxImpl::Call(WXmlSaxCallback<Arguments...> WXmlSax::*slot, Given... given) {
    if (owner_ == nullptr) return E_FAIL;
    WXmlSaxCallback<Arguments...> const callback = owner_->*slot;
    if (callback.function == nullptr) return S_OK;
    return Guarded([&] { return callback.function(callback.context, given...) ? S_OK : E_FAIL; });
}

HRESULT WXmlSaxImpl::putDocumentLocator(ISAXLocator* /*locator*/) noexcept {
    return S_OK;
}

HRESULT WXmlSaxImpl::startDocument() noexcept {
    return Call(&WXmlSax::OnStartDocument);
}

HRESULT WXmlSaxImpl::endDocument() noexcept {
    return Call(&WXmlSax::OnEndDocument);
}

HRESULT WXmlSaxImpl::startPrefixMapping(wchar_t const* /*prefix*/, int /*prefixLength*/,
                                        wchar_t const* /*uri*/, int /*uriLength*/) noexcept {
    return S_OK;
}

HRESULT WXmlSaxImpl::endPrefixMapping(wchar_t const* /*prefix*/, int /*prefixLength*/) noexcept {
    return S_OK;
}

HRESULT WXmlSaxImpl::startElement(wchar_t const* /*uri*/, int /*uriLength*/, wchar_t const* local,
                                  int localLength, wchar_t const* /*qualified*/,
                                  int /*qualifiedLength*/, ISAXAttributes* attributes) noexcept {
    if (owner_ != nullptr && owner_->OnStartElement.function == nullptr) return S_OK;
    return Guarded([&] { return CallWithAttributes({local, localLength}, *attributes); });
}

/// The vector is taken out for the call, so that a callback that starts another parse does not
/// change the one that it was given.
HRESULT WXmlSaxImpl::CallWithAttributes(WXmlSaxText const& name, ISAXAttributes& attributes) {
    std::vector<WXmlSaxAttribute> records = std::exchange(records_, {});
    HRESULT result = fill(records, attributes);
    if (SUCCEEDED(result)) result = Call(&WXmlSax::OnStartElement, &name, &std::as_const(records));
    records_ = std::move(records);
    return result;
}

HRESULT WXmlSaxImpl::endElement(wchar_t const* /*uri*/, int /*uriLength*/, wchar_t const* local,
                                int localLength, wchar_t const* /*qualified*/,
                                int /*qualifiedLength*/) noexcept {
    WXmlSaxText const name{local, localLength};
    return Call(&WXmlSax::OnEndElement, &name);
}

HRESULT WXmlSaxImpl::characters(wchar_t const* text, int length) noexcept {
    WXmlSaxText const piece{text, length};
    return Call(&WXmlSax::OnCharacters, &piece);
}

HRESULT WXmlSaxImpl::ignorableWhitespace(wchar_t const* /*text*/, int /*length*/) noexcept {
    return S_OK;
}

HRESULT WXmlSaxImpl::processingInstruction(wchar_t const* /*target*/, int /*targetLength*/,
                                           wchar_t const* /*data*/, int /*dataLength*/) noexcept {
    return S_OK;
}

HRESULT WXmlSaxImpl::skippedEntity(wchar_t const* /*name*/, int /*length*/) noexcept {
    return S_OK;
}

WXmlSax::WXmlSax() : implementation{new WXmlSaxImpl{this}} {}

WXmlSax::~WXmlSax() {
    implementation->Disown();
    implementation->Release();
}

bool WXmlSax::ParseFile(wchar_t const* path) {
    CString const file{path};
    return parse(implementation, [&](ISAXXMLReader& reader) { return reader.parseURL(file); });
}

bool WXmlSax::ParseString(wchar_t const* text) {
    CString const copy{text};
    _variant_t const input{copy.GetString()};
    return parse(implementation, [&](ISAXXMLReader& reader) { return reader.parse(input); });
}

bool WXmlSax::ParseIStream(IStream* stream) {
    EnginePtr<GuardedStream> guarded;
    if (stream != nullptr) guarded.Attach(new GuardedStream{stream});
    VARIANT input{};
    input.vt = VT_UNKNOWN;
    input.punkVal = guarded;
    bool const done =
        parse(implementation, [&](ISAXXMLReader& reader) { return reader.parse(input); });
    if (guarded) guarded->RethrowException();
    return done;
}
