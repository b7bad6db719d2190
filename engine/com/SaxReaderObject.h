// The engine object that parses by events.
#pragma once

#include <string>

#include <TibXml/engine/ISAXCounter.h>
#include <TibXml/engine/ISAXXMLReader.h>
#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>
#include <com/Measures.h>

#include "ComPtr.h"
#include "SaxForwarder.h"
#include "Sources.h"

namespace tibxml::com {

class SaxReaderObject final
    : public platform::ComObject<ISAXXMLReader, ISAXCounter, ISupportErrorInfo> {
public:
    // What CoCreateInstance calls.
    static HRESULT create(REFIID iid, void** object) noexcept;

    HRESULT getFeature(wchar_t const* name, VARIANT_BOOL* value) noexcept override;
    HRESULT putFeature(wchar_t const* name, VARIANT_BOOL value) noexcept override;
    HRESULT getProperty(wchar_t const* name, VARIANT* value) noexcept override;
    HRESULT putProperty(wchar_t const* name, VARIANT value) noexcept override;
    HRESULT getEntityResolver(ISAXEntityResolver** resolver) noexcept override;
    HRESULT putEntityResolver(ISAXEntityResolver* resolver) noexcept override;
    HRESULT getContentHandler(ISAXContentHandler** handler) noexcept override;
    HRESULT putContentHandler(ISAXContentHandler* handler) noexcept override;
    HRESULT getDTDHandler(ISAXDTDHandler** handler) noexcept override;
    HRESULT putDTDHandler(ISAXDTDHandler* handler) noexcept override;
    HRESULT getErrorHandler(ISAXErrorHandler** handler) noexcept override;
    HRESULT putErrorHandler(ISAXErrorHandler* handler) noexcept override;
    HRESULT getBaseURL(wchar_t const** url) noexcept override;
    HRESULT putBaseURL(wchar_t const* url) noexcept override;
    HRESULT getSecureBaseURL(wchar_t const** url) noexcept override;
    HRESULT putSecureBaseURL(wchar_t const* url) noexcept override;
    HRESULT parse(VARIANT input) noexcept override;
    HRESULT parseURL(wchar_t const* url) noexcept override;

    HRESULT count(VARIANT input, SAXCounts* counts) noexcept override;

    HRESULT InterfaceSupportsErrorInfo(REFIID) noexcept override { return S_OK; }

private:
    ~SaxReaderObject() override = default;

    // Parses: open(error, read) opens the input and returns what `read` does with it; `source` is
    // the path, if there is one.
    template <class Open>
    HRESULT parseBy(std::wstring source, Open open);

    void reportError(SaxLocator& locator, reader::ReadError const& error) const;

    LiveObject live_;
    ComPtr<ISAXContentHandler> contentHandler_;
    ComPtr<ISAXErrorHandler> errorHandler_;
    bool isParsing_ = false;
};

} // namespace tibxml::com
