#include "StylesheetTemplate.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <tree/Text.h>

#include "DocumentFile.h"
#include "Failure.h"
#include "Sources.h"
#include "Text.h"
#include "Transformation.h"

namespace tibxml::com {

HRESULT StylesheetTemplate::create(REFIID iid, void** object) noexcept {
    return guarded(IID_IUnknown, [&] {
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): guarded() handles it
        auto const made = ComPtr<StylesheetTemplate>::adopt(new StylesheetTemplate);
        return made->QueryInterface(iid, object);
    });
}

HRESULT StylesheetTemplate::putref_stylesheet(IXMLDOMNode* stylesheet) noexcept {
    return guarded(IID_IXSLTemplate, [&] {
        CompiledDocument compiled;
        if (stylesheet != nullptr) {
            compiled.document = ComPtr<DocumentObject>{&documentOf(*handleOf(stylesheet))};
            compiled.stylesheet = compiled.document->asStylesheet();
        }
        compiled_ = std::move(compiled);
        return S_OK;
    });
}

HRESULT StylesheetTemplate::get_stylesheet(IXMLDOMNode** stylesheet) noexcept {
    return replyObject(IID_IXSLTemplate, stylesheet, [&]() -> IXMLDOMNode* {
        return ComPtr<DocumentObject>{compiled_.document}.detach();
    });
}

HRESULT StylesheetTemplate::createProcessor(IXSLProcessor** processor) noexcept {
    return reply(IID_IXSLTemplate, processor, [&]() -> IXSLProcessor* {
        if (!compiled_.stylesheet) throw Failure{E_FAIL, "there is no stylesheet"};
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): reply() handles it
        return new StylesheetProcessor{*this, compiled_};
    });
}

namespace {

bool isNothing(VARIANT const& value) noexcept {
    return value.vt == VT_EMPTY || value.vt == VT_NULL;
}

VARIANT objectVariant(IUnknown* object) noexcept {
    VARIANT value{};
    if (object == nullptr) return value;
    object->AddRef();
    value.vt = VT_UNKNOWN;
    value.punkVal = object;
    return value;
}

// The document in a stream, read as any other is.
ComPtr<NodeHandle> loaded(VARIANT const& stream) {
    // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): guarded() handles it
    auto* const document = new DocumentObject;
    auto handle = ComPtr<NodeHandle>::adopt(document);
    VARIANT_BOOL isLoaded = VARIANT_FALSE;
    HRESULT const result = document->load(stream, &isLoaded);
    if (FAILED(result)) throw Failure{result, "the input cannot be read"};
    if (isLoaded == VARIANT_FALSE) throw Failure{E_FAIL, "the input is not a document"};
    return handle;
}

ComPtr<NodeHandle> inputIn(VARIANT const& value) {
    if (streamOf(objectIn(value))) return loaded(value);
    ComPtr<NodeHandle> handle = handleOf(objectIn(value));
    static_cast<void>(sourceOf(*handle)); // or it cannot be transformed
    return handle;
}

std::string utf8Of(BSTR text) {
    XmlText const utf8{viewOf(text)};
    requireValid(utf8);
    return std::string{utf8.view()};
}

transform::ExpandedName nameIn(BSTR local, BSTR uri) {
    std::wstring_view const name = viewOf(local);
    bool const isName = !name.empty() && tree::isNameStart(name.front()) &&
                        std::all_of(name.begin(), name.end(), tree::isNamePart);
    if (!isName) throw Failure{E_INVALIDARG, "that is not a name without a prefix"};
    return {utf8Of(local), utf8Of(uri)};
}

// Nothing for what is nothing.
std::optional<decltype(transform::Parameter::value)> parameterIn(VARIANT const& value) {
    switch (value.vt) {
    case VT_EMPTY:
    case VT_NULL: return std::nullopt;
    case VT_BOOL: return value.boolVal != VARIANT_FALSE;
    case VT_UI1: return static_cast<double>(value.bVal);
    case VT_R8: return value.dblVal;
    case VT_I2:
    case VT_I4:
    case VT_INT: return static_cast<double>(integerIn(value, E_INVALIDARG));
    default: return utf8Of(stringIn(value, E_INVALIDARG));
    }
}

} // namespace

StylesheetProcessor::StylesheetProcessor(IXSLTemplate& owner, CompiledDocument compiled)
    : owner_{&owner},
      compiled_{std::move(compiled)} {}

HRESULT StylesheetProcessor::put_input(VARIANT input) noexcept {
    return guarded(IID_IXSLProcessor, [&] {
        input_ = isNothing(input) ? ComPtr<NodeHandle>{} : inputIn(input);
        result_.clear();
        state_ = input_ ? XSL_READYSTATE_LOADED : XSL_READYSTATE_UNINITIALIZED;
        return S_OK;
    });
}

HRESULT StylesheetProcessor::get_input(VARIANT* input) noexcept {
    return reply(IID_IXSLProcessor, input,
                 [&] { return objectVariant(input_ ? input_->asNode() : nullptr); });
}

HRESULT StylesheetProcessor::get_ownerTemplate(IXSLTemplate** owner) noexcept {
    return reply(IID_IXSLProcessor, owner, [&] { return ComPtr<IXSLTemplate>{owner_}.detach(); });
}

HRESULT StylesheetProcessor::setStartMode(BSTR mode, BSTR namespaceURI) noexcept {
    return guarded(IID_IXSLProcessor, [&] {
        mode_ = viewOf(mode).empty() ? transform::ExpandedName{} : nameIn(mode, namespaceURI);
        return S_OK;
    });
}

HRESULT StylesheetProcessor::get_startMode(BSTR* mode) noexcept {
    return reply(IID_IXSLProcessor, mode, [&] { return toBstr(std::string_view{mode_.local}); });
}

HRESULT StylesheetProcessor::get_startModeURI(BSTR* namespaceURI) noexcept {
    return reply(IID_IXSLProcessor, namespaceURI,
                 [&] { return toBstr(std::string_view{mode_.uri}); });
}

HRESULT StylesheetProcessor::put_output(VARIANT output) noexcept {
    return guarded(IID_IXSLProcessor, [&] {
        ComPtr<ISequentialStream> stream = streamOf(objectIn(output));
        ComPtr<NodeHandle> document;
        if (!stream && !isNothing(output)) {
            document = handleOf(objectIn(output));
            static_cast<void>(documentOf(*document));
        }
        output_ = ComPtr<IUnknown>{objectIn(output)};
        stream_ = std::move(stream);
        targetDocument_ = std::move(document);
        return S_OK;
    });
}

HRESULT StylesheetProcessor::get_output(VARIANT* output) noexcept {
    return reply(IID_IXSLProcessor, output, [&] {
        if (output_) return objectVariant(output_.get());
        return state_ == XSL_READYSTATE_COMPLETE ? stringVariant(result_) : VARIANT{};
    });
}

transform::Request StylesheetProcessor::request() const {
    return {sourceOf(*input_), permissionOf(*compiled_.document), parameters_, mode_};
}

std::string StylesheetProcessor::text(transform::TextEncoding encoding,
                                      std::string& messages) const {
    return compiled_.stylesheet->text(request(), encoding, messages);
}

void StylesheetProcessor::run(std::string& messages) {
    if (targetDocument_) {
        tree::DocumentRef const result = compiled_.stylesheet->apply(request(), messages);
        targetDocument_->owner().replaceContent(result);
    } else if (stream_) {
        std::string const bytes = text(transform::TextEncoding::declared, messages);
        ComPtr<ISequentialStream> const stream = stream_; // its calls may put another one
        writeToStream(bytes, *stream);
    } else {
        result_ = text(transform::TextEncoding::wide, messages);
    }
}

HRESULT StylesheetProcessor::transform(VARIANT_BOOL* isDone) noexcept {
    if (isDone == nullptr) return E_POINTER;
    *isDone = VARIANT_FALSE;
    if (state_ == XSL_READYSTATE_INTERACTIVE) return E_FAIL;
    HRESULT const result = guarded(IID_IXSLProcessor, [&] {
        if (!input_) throw Failure{E_FAIL, "there is no input"};
        result_.clear();
        state_ = XSL_READYSTATE_INTERACTIVE;
        std::string messages;
        run(messages);
        leaveMessages(IID_IXSLProcessor, messages);
        *isDone = VARIANT_TRUE;
        return S_OK;
    });
    if (input_) state_ = result == S_OK ? XSL_READYSTATE_COMPLETE : XSL_READYSTATE_LOADED;
    return result;
}

HRESULT StylesheetProcessor::reset() noexcept {
    result_.clear();
    state_ = input_ ? XSL_READYSTATE_LOADED : XSL_READYSTATE_UNINITIALIZED;
    return S_OK;
}

HRESULT StylesheetProcessor::get_readyState(LONG* state) noexcept {
    return reply(IID_IXSLProcessor, state, [&] { return LONG{state_}; });
}

HRESULT StylesheetProcessor::addParameter(BSTR name, VARIANT value, BSTR namespaceURI) noexcept {
    return guarded(IID_IXSLProcessor, [&] {
        transform::ExpandedName full = nameIn(name, namespaceURI);
        auto given = parameterIn(value);
        auto const known = std::find_if(parameters_.begin(), parameters_.end(),
                                        [&](auto const& other) { return other.name == full; });
        if (known == parameters_.end()) {
            if (given) parameters_.push_back({std::move(full), std::move(*given)});
        } else if (given) {
            known->value = std::move(*given);
        } else {
            parameters_.erase(known);
        }
        return S_OK;
    });
}

HRESULT StylesheetProcessor::addObject(IUnknown* /*object*/, BSTR /*namespaceURI*/) noexcept {
    return E_NOTIMPL;
}

HRESULT StylesheetProcessor::get_stylesheet(IXMLDOMNode** stylesheet) noexcept {
    return reply(IID_IXSLProcessor, stylesheet, [&]() -> IXMLDOMNode* {
        return ComPtr<DocumentObject>{compiled_.document}.detach();
    });
}

} // namespace tibxml::com
