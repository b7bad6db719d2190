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

IXMLDOMParseError* newParseError(std::vector<reader::ReadError> errors, std::string url) {
    auto found =
        std::make_shared<FoundErrors const>(FoundErrors{std::move(errors), std::move(url)});
    return new ParseErrorObject{std::move(found), 0};
}

ParseErrorObject::ParseErrorObject(std::shared_ptr<FoundErrors const> found,
                                   std::size_t index) noexcept
    : found_{std::move(found)},
      index_{index} {}

reader::ReadError const& ParseErrorObject::error() const noexcept {
    static reader::ReadError const none;
    return index_ < found_->errors.size() ? found_->errors[index_] : none;
}

HRESULT ParseErrorObject::get_errorCode(LONG* code) noexcept {
    return reply(IID_IXMLDOMParseError, code, [&] { return static_cast<LONG>(error().code); });
}

HRESULT ParseErrorObject::get_url(BSTR* url) noexcept {
    return answerText(url, found_->url);
}

HRESULT ParseErrorObject::get_reason(BSTR* reason) noexcept {
    return answerText(reason, error().reason);
}

HRESULT ParseErrorObject::get_srcText(BSTR* text) noexcept {
    return answerText(text, error().sourceLine);
}

HRESULT ParseErrorObject::get_line(LONG* line) noexcept {
    return answerNumber(line, error().line);
}

HRESULT ParseErrorObject::get_linepos(LONG* position) noexcept {
    return answerNumber(position, error().column);
}

HRESULT ParseErrorObject::get_filepos(LONG* position) noexcept {
    return answerNumber(position, error().offset);
}

HRESULT ParseErrorObject::get_allErrors(IXMLDOMParseErrorCollection** errors) noexcept {
    return reply(IID_IXMLDOMParseError2, errors, [&] {
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): reply() handles it
        return new ParseErrorList{found_};
    });
}

ParseErrorList::ParseErrorList(std::shared_ptr<FoundErrors const> found) noexcept
    : found_{std::move(found)} {}

HRESULT ParseErrorList::get_item(LONG index, IXMLDOMParseError2** error) noexcept {
    return replyObject(IID_IXMLDOMParseErrorCollection, error, [&]() -> IXMLDOMParseError2* {
        auto const position = static_cast<std::size_t>(index);
        if (index < 0 || position >= found_->errors.size()) return nullptr;
        // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): replyObject() handles it
        return new ParseErrorObject{found_, position};
    });
}

HRESULT ParseErrorList::get_length(LONG* length) noexcept {
    return reply(IID_IXMLDOMParseErrorCollection, length,
                 [&] { return static_cast<LONG>(found_->errors.size()); });
}

HRESULT ParseErrorList::get_next(IXMLDOMParseError2** error) noexcept {
    HRESULT const result = get_item(next_, error);
    if (result == S_OK) ++next_;
    return result;
}

HRESULT ParseErrorList::reset() noexcept {
    next_ = 0;
    return S_OK;
}

} // namespace tibxml::com
