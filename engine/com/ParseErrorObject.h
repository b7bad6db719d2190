// Why a load failed, or what a validation found, for callers.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <TibXml/engine/IXMLDOMParseError2.h>
#include <TibXml/platform/ComObject.h>
#include <com/Measures.h>
#include <reader/Reader.h>

namespace tibxml::com {

// What was found in one go; it does not change any more.
struct FoundErrors {
    std::vector<reader::ReadError> errors;
    std::string url;
};

// The error object for the first of some errors, and for none when there is none: one reference for
// the caller. Throws std::bad_alloc.
IXMLDOMParseError* newParseError(std::vector<reader::ReadError> errors, std::string url);

// One of them. A later load does not change it.
class ParseErrorObject final : public platform::ComObject<IXMLDOMParseError2> {
public:
    // An index past the end is an object that says that there was no error.
    ParseErrorObject(std::shared_ptr<FoundErrors const> found, std::size_t index) noexcept;

    HRESULT get_errorCode(LONG* code) noexcept override;
    HRESULT get_url(BSTR* url) noexcept override;
    HRESULT get_reason(BSTR* reason) noexcept override;
    HRESULT get_srcText(BSTR* text) noexcept override;
    HRESULT get_line(LONG* line) noexcept override;
    HRESULT get_linepos(LONG* position) noexcept override;
    HRESULT get_filepos(LONG* position) noexcept override;
    HRESULT get_allErrors(IXMLDOMParseErrorCollection** errors) noexcept override;

private:
    ~ParseErrorObject() override = default;

    reader::ReadError const& error() const noexcept;

    LiveObject live_;
    std::shared_ptr<FoundErrors const> found_;
    std::size_t index_;
};

// All errors that were found in one go.
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
