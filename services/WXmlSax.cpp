#include <TibXml/WXmlSax.h>

#include <TibXml/EnginePtr.h>
#include <TibXml/engine/ISAXXMLReader.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/ComRuntime.h>
#include <TibXml/platform/Variant.h>

#include <services/WXmlSaxImpl.h>

#include <exception>
#include <utility>

namespace {

EnginePtr<ISAXXMLReader> createReader() noexcept {
    void* made = nullptr;
    if (FAILED(
            CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL, IID_ISAXXMLReader, &made)))
        return {};
    return EnginePtr<ISAXXMLReader>{static_cast<ISAXXMLReader*>(made), false};
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
    EnginePtr<ISAXXMLReader> reader = createReader();
    if (!reader) return false;
    reader->putContentHandler(handler);
    HRESULT const result = start(*reader.operator->());
    reader.Release();
    handler->RethrowException();
    return SUCCEEDED(result);
}

} // namespace

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
