// Why a load failed, for callers.
#pragma once

#include <string>

#include <TibXml/engine/IXMLDOMParseError.h>
#include <TibXml/platform/ComObject.h>

#include <com/LiveObjects.h>
#include <reader/Reader.h>

namespace tibxml::com {

// A snapshot: a later load does not change it.
class ParseErrorObject final : public platform::ComObject<IXMLDOMParseError> {
public:
    ParseErrorObject(reader::ReadError error, std::string url);

    HRESULT get_errorCode(LONG* code) noexcept override;
    HRESULT get_url(BSTR* url) noexcept override;
    HRESULT get_reason(BSTR* reason) noexcept override;
    HRESULT get_srcText(BSTR* text) noexcept override;
    HRESULT get_line(LONG* line) noexcept override;
    HRESULT get_linepos(LONG* position) noexcept override;
    HRESULT get_filepos(LONG* position) noexcept override;

private:
    ~ParseErrorObject() override = default;

    LiveObject live_;
    reader::ReadError error_;
    std::string url_;
};

} // namespace tibxml::com
