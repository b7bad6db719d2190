// All errors that were found in one go, for callers.
#pragma once

#include "ParseErrorObject.h"

namespace tibxml::com {

class ParseErrorList final : public platform::ComObject<IXMLDOMParseErrorCollection> {
public:
    explicit ParseErrorList(std::shared_ptr<FoundErrors const> found) noexcept;

    HRESULT get_item(LONG index, IXMLDOMParseError2** error) noexcept override;
    HRESULT get_length(LONG* length) noexcept override;
    HRESULT get_next(IXMLDOMParseError2** error) noexcept override;
    HRESULT reset() noexcept override;

private:
    ~ParseErrorList() override = default;

    LiveObject live_;
    std::shared_ptr<FoundErrors const> found_;
    LONG next_ = 0;
};

} // namespace tibxml::com
