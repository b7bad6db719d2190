#pragma once

#include <TibXml/WXmlSax.h>
#include <TibXml/engine/ISAXContentHandler.h>
#include <TibXml/platform/ComObject.h>

#include <exception>

/// The engine's handler, which calls the callbacks of a `WXmlSax`. It may outlive that.
class WXmlSaxImpl final : public tibxml::platform::ComObject<ISAXContentHandler> {
public:
    explicit WXmlSaxImpl(WXmlSax* owner) noexcept : owner_{owner} {}

    /// There are no callbacks any more: an engine that goes on is stopped.
    void Disown() noexcept { owner_ = nullptr; }

    /// Throws what a callback has thrown since the last time, if anything.
    void RethrowException();

    HRESULT putDocumentLocator(ISAXLocator* locator) noexcept override;
    HRESULT startDocument() noexcept override;
    HRESULT endDocument() noexcept override;
    HRESULT startPrefixMapping(wchar_t const* prefix, int prefixLength, wchar_t const* uri,
                               int uriLength) noexcept override;
    HRESULT endPrefixMapping(wchar_t const* prefix, int prefixLength) noexcept override;
    HRESULT startElement(wchar_t const* uri, int uriLength, wchar_t const* local, int localLength,
                         wchar_t const* qualified, int qualifiedLength,
                         ISAXAttributes* attributes) noexcept override;
    HRESULT endElement(wchar_t const* uri, int uriLength, wchar_t const* local, int localLength,
                       wchar_t const* qualified, int qualifiedLength) noexcept override;
    HRESULT characters(wchar_t const* text, int length) noexcept override;
    HRESULT ignorableWhitespace(wchar_t const* text, int length) noexcept override;
    HRESULT processingInstruction(wchar_t const* target, int targetLength, wchar_t const* data,
                                  int dataLength) noexcept override;
    HRESULT skippedEntity(wchar_t const* name, int length) noexcept override;

private:
    ~WXmlSaxImpl() override = default;

    template <class... Arguments, class... Given>
    HRESULT Call(WXmlSaxCallback<Arguments...> WXmlSax::*slot, Given... given);
    template <class Action>
    HRESULT Guarded(Action action) noexcept;
    HRESULT CallWithAttributes(WXmlSaxText const& name, ISAXAttributes& attributes);

    WXmlSax* owner_;
    std::exception_ptr exception_;
    std::vector<WXmlSaxAttribute> records_; // kept for its memory
};
