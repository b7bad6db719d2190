#include "ParseErrorObject.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "Failure.h"
#include "Text.h"

namespace tibxml::com {

namespace {

HRESULT answerText(BSTR* out, std::string_view text) noexcept {
    return reply(IID_IXMLDOMParseError, out, [&] { return toBstr(text); });
}

// Beyond what 32 bits hold, the largest number they do.
HRESULT answerNumber(LONG* out, long number) noexcept {
    return reply(IID_IXMLDOMParseError, out, [&] {
        return static_cast<LONG>(std::min<long>(number, std::numeric_limits<LONG>::max()));
    });
}

} // namespace

ParseErrorObject::ParseErrorObject(reader::ReadError error, std::string url)
    : error_{std::move(error)},
      url_{std::move(url)} {}

HRESULT ParseErrorObject::get_errorCode(LONG* code) noexcept {
    return reply(IID_IXMLDOMParseError, code, [&] { return static_cast<LONG>(error_.code); });
}

HRESULT ParseErrorObject::get_url(BSTR* url) noexcept {
    return answerText(url, url_);
}

HRESULT ParseErrorObject::get_reason(BSTR* reason) noexcept {
    return answerText(reason, error_.reason);
}

HRESULT ParseErrorObject::get_srcText(BSTR* text) noexcept {
    return answerText(text, error_.sourceLine);
}

HRESULT ParseErrorObject::get_line(LONG* line) noexcept {
    return answerNumber(line, error_.line);
}

HRESULT ParseErrorObject::get_linepos(LONG* position) noexcept {
    return answerNumber(position, error_.column);
}

HRESULT ParseErrorObject::get_filepos(LONG* position) noexcept {
    return answerNumber(position, error_.offset);
}

} // namespace tibxml::com
