#include "SaxReaderObject.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include <TibXml/platform/Utf.h>
#include <reader/Counting.h>

#include "Failure.h"
#include "Text.h"

namespace tibxml::com {

namespace {

// What the reader does and what it does not, by the names that callers know.
struct Feature {
    std::wstring_view name;
    bool isOn;
};

constexpr Feature features[] = {
    {L"exhaustive-errors", false},
    {L"http://xml.org/sax/features/external-general-entities", false},
    {L"http://xml.org/sax/features/external-parameter-entities", false},
    {L"http://xml.org/sax/features/namespace-prefixes", false},
    {L"http://xml.org/sax/features/namespaces", true},
    {L"normalize-line-breaks", true},
    {L"prohibit-dtd", true},
    {L"schema-validation", false},
};

// Whether the reader has a feature; nothing for one that it does not know. Null is not a name.
std::optional<bool> saxFeature(wchar_t const* name) noexcept {
    if (name == nullptr) return {};
    auto const* const found =
        std::find_if(std::begin(features), std::end(features),
                     [=](Feature const& known) { return known.name == name; });
    return found != std::end(features) ? std::optional{found->isOn} : std::nullopt;
}

// Counts, and shows before each read of a stream how far it has come.
class Counting final : private reader::ByteSource {
public:
    explicit Counting(SAXCounts& shown) noexcept : shown_{shown} {}

    bool run(reader::Input const& input, reader::ReadError& error) {
        auto const* const source = std::get_if<reader::ByteSource*>(&input.from);
        source_ = source != nullptr ? *source : nullptr;
        bool const isDone =
            reader::count(counts_, source_ != nullptr ? reader::Input{*this} : input, error);
        show();
        return isDone;
    }

private:
    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override {
        show();
        return source_->read(buffer, size);
    }

    void show() noexcept {
        shown_ = {counts_.elements, counts_.attributes, counts_.textBytes, counts_.depth};
    }

    SAXCounts& shown_;
    reader::Counts counts_;
    reader::ByteSource* source_ = nullptr;
};

// What is true until the end of a block.
class Meanwhile {
public:
    explicit Meanwhile(bool& flag) noexcept : flag_{flag} { flag_ = true; }

    Meanwhile(Meanwhile const&) = delete;
    Meanwhile& operator=(Meanwhile const&) = delete;

    ~Meanwhile() { flag_ = false; }

private:
    bool& flag_;
};

// Lets a locator go before the place that it follows ends, however that happens.
class Followed {
public:
    Followed(SaxLocator& locator, reader::ReadError const& error) noexcept
        : locator_{locator},
          error_{error} {}

    Followed(Followed const&) = delete;
    Followed& operator=(Followed const&) = delete;

    ~Followed() { locator_.stay(error_); }

private:
    SaxLocator& locator_;
    reader::ReadError const& error_;
};

std::string describe(reader::ReadError const& error) {
    if (error.line == 0) return error.reason;
    return std::to_string(error.line) + ":" + std::to_string(error.column) + ": " + error.reason;
}

bool readInput(VARIANT const& input, reader::ReadError& error, Reading const& read) {
    return input.vt == VT_BSTR ? read(inputOf(input.bstrVal))
                               : readStream(input.punkVal, error, read);
}

// There is none, and there will be none.
template <class Object>
HRESULT answerNone(Object** out) noexcept {
    if (out == nullptr) return E_POINTER;
    *out = nullptr;
    return S_OK;
}

HRESULT acceptNone(void const* object) noexcept {
    return object == nullptr ? S_OK : E_NOTIMPL;
}

template <class Interface>
HRESULT handOut(ComPtr<Interface> const& kept, Interface** out) noexcept {
    if (out == nullptr) return E_POINTER;
    *out = ComPtr<Interface>{kept}.detach();
    return S_OK;
}

} // namespace

HRESULT SaxReaderObject::create(REFIID iid, void** object) noexcept {
    return guarded(IID_IUnknown, [&] {
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): guarded() handles it
        auto const reader = ComPtr<SaxReaderObject>::adopt(new SaxReaderObject);
        return reader->QueryInterface(iid, object);
    });
}

HRESULT SaxReaderObject::getFeature(wchar_t const* name, VARIANT_BOOL* value) noexcept {
    if (value == nullptr) return E_POINTER;
    std::optional<bool> const feature = saxFeature(name);
    *value = feature.value_or(false) ? VARIANT_TRUE : VARIANT_FALSE;
    return feature ? S_OK : E_INVALIDARG;
}

HRESULT SaxReaderObject::putFeature(wchar_t const* name, VARIANT_BOOL value) noexcept {
    std::optional<bool> const feature = saxFeature(name);
    if (!feature) return E_INVALIDARG;
    return *feature == (value != VARIANT_FALSE) ? S_OK : E_NOTIMPL;
}

HRESULT SaxReaderObject::getProperty(wchar_t const* /*name*/, VARIANT* value) noexcept {
    if (value == nullptr) return E_POINTER;
    VariantInit(value);
    return E_INVALIDARG;
}

HRESULT SaxReaderObject::putProperty(wchar_t const* /*name*/, VARIANT /*value*/) noexcept {
    return E_INVALIDARG;
}

HRESULT SaxReaderObject::getEntityResolver(ISAXEntityResolver** resolver) noexcept {
    return answerNone(resolver);
}

HRESULT SaxReaderObject::putEntityResolver(ISAXEntityResolver* resolver) noexcept {
    return acceptNone(resolver);
}

HRESULT SaxReaderObject::getContentHandler(ISAXContentHandler** handler) noexcept {
    return handOut(contentHandler_, handler);
}

HRESULT SaxReaderObject::putContentHandler(ISAXContentHandler* handler) noexcept {
    contentHandler_ = ComPtr<ISAXContentHandler>{handler};
    return S_OK;
}

HRESULT SaxReaderObject::getDTDHandler(ISAXDTDHandler** handler) noexcept {
    return answerNone(handler);
}

HRESULT SaxReaderObject::putDTDHandler(ISAXDTDHandler* handler) noexcept {
    return acceptNone(handler);
}

HRESULT SaxReaderObject::getErrorHandler(ISAXErrorHandler** handler) noexcept {
    return handOut(errorHandler_, handler);
}

HRESULT SaxReaderObject::putErrorHandler(ISAXErrorHandler* handler) noexcept {
    errorHandler_ = ComPtr<ISAXErrorHandler>{handler};
    return S_OK;
}

HRESULT SaxReaderObject::getBaseURL(wchar_t const** url) noexcept {
    return answerNone(url);
}

HRESULT SaxReaderObject::putBaseURL(wchar_t const* url) noexcept {
    return acceptNone(url);
}

HRESULT SaxReaderObject::getSecureBaseURL(wchar_t const** url) noexcept {
    return answerNone(url);
}

HRESULT SaxReaderObject::putSecureBaseURL(wchar_t const* url) noexcept {
    return acceptNone(url);
}

HRESULT SaxReaderObject::parse(VARIANT input) noexcept {
    if (!isSource(input)) return E_INVALIDARG;
    return guarded(IID_ISAXXMLReader, [&] {
        return parseBy({}, [&](reader::ReadError& error, Reading const& read) {
            return readInput(input, error, read);
        });
    });
}

HRESULT SaxReaderObject::parseURL(wchar_t const* url) noexcept {
    if (url == nullptr) return E_INVALIDARG;
    return guarded(IID_ISAXXMLReader, [&] {
        std::string path;
        if (!platform::appendUtf8(path, url)) path.clear(); // no file has such a name
        return parseBy(url, [&](reader::ReadError& error, Reading const& read) {
            std::string location; // nothing is looked for beside the file
            return readFile(path, location, error, read);
        });
    });
}

HRESULT SaxReaderObject::count(VARIANT input, SAXCounts* counts) noexcept {
    if (counts == nullptr) return E_POINTER;
    *counts = {};
    if (!isSource(input)) return E_INVALIDARG;
    return guarded(IID_ISAXCounter, [&] {
        Counting counting{*counts};
        reader::ReadError error;
        auto const count = [&](reader::Input const& opened) { return counting.run(opened, error); };
        if (readInput(input, error, count)) return S_OK;
        throw Failure{static_cast<HRESULT>(error.code), describe(error)};
    });
}

template <class Open>
HRESULT SaxReaderObject::parseBy(std::wstring source, Open open) {
    if (isParsing_) throw Failure{E_FAIL, "the reader is parsing something else"};
    ComPtr<SaxReaderObject> const self{this}; // a handler may drop the last reference
    Meanwhile const parsing{isParsing_};
    SetErrorInfo(0, nullptr); // what is there after a handler has stopped the parse is its own
    auto const locator = ComPtr<SaxLocator>::adopt(new SaxLocator{std::move(source)});
    SaxForwarder forwarder{contentHandler_, locator};
    reader::ReadError error;
    bool const isDone = [&] {
        Followed const followed{*locator, error};
        return open(error, [&](reader::Input const& input) {
            return reader::readSax(forwarder, input, error);
        });
    }();
    if (FAILED(forwarder.result())) return forwarder.result();
    if (isDone) return S_OK;
    reportError(*locator, error);
    throw Failure{static_cast<HRESULT>(error.code), describe(error)};
}

void SaxReaderObject::reportError(SaxLocator& locator, reader::ReadError const& error) const {
    if (!errorHandler_) return;
    std::wstring message;
    platform::appendWide(message, error.reason);
    ComPtr<ISAXErrorHandler> const handler{errorHandler_};
    handler->fatalError(&locator, message.c_str(), static_cast<HRESULT>(error.code));
}

} // namespace tibxml::com
