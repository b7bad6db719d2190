#include "ParseErrorList.h"

#include <utility>

#include "Failure.h"

namespace tibxml::com {

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
