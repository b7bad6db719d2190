// What passes from the reader to a handler: its events, and where the parse stands.
#pragma once

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include <TibXml/engine/ISAXContentHandler.h>
#include <TibXml/engine/ISAXLocator.h>
#include <TibXml/platform/ComObject.h>
#include <com/Measures.h>
#include <reader/SaxReader.h>

#include "ComPtr.h"
#include "SaxAttributes.h"

namespace tibxml::com {

// Where a parse stands, as a handler asks for it. One per parse; a handler may keep it beyond that.
class SaxLocator final : public platform::ComObject<ISAXLocator> {
public:
    // `source` is the path that is being parsed, empty when there is none.
    explicit SaxLocator(std::wstring source) : source_{std::move(source)} {}

    // Asks the place from now on.
    void follow(reader::SaxPlace const& place) noexcept { place_ = &place; }

    // Stays where the error is, if there was one: the place is about to end.
    void stay(reader::ReadError const& error) noexcept {
        place_ = nullptr;
        line_ = error.line;
        column_ = error.column;
    }

    HRESULT getColumnNumber(int* column) noexcept override {
        return answer(column, place_ != nullptr ? place_->column() : column_);
    }

    HRESULT getLineNumber(int* line) noexcept override {
        return answer(line, place_ != nullptr ? place_->line() : line_);
    }

    HRESULT getPublicId(wchar_t const** id) noexcept override { return answer(id, nullptr); }

    HRESULT getSystemId(wchar_t const** id) noexcept override {
        return answer(id, source_.empty() ? nullptr : source_.c_str());
    }

private:
    ~SaxLocator() override = default;

    static HRESULT answer(int* out, long number) noexcept {
        if (out == nullptr) return E_POINTER;
        *out = static_cast<int>(std::min<long>(number, std::numeric_limits<int>::max()));
        return S_OK;
    }

    static HRESULT answer(wchar_t const** out, wchar_t const* text) noexcept {
        if (out == nullptr) return E_POINTER;
        *out = text;
        return S_OK;
    }

    LiveObject live_;
    reader::SaxPlace const* place_ = nullptr;
    long line_ = 0;
    long column_ = 0;
    std::wstring source_;
};

// Tells a handler what the reader tells.

class SaxForwarder final : public reader::SaxEvents {
public:
    // The handler may be null: then nobody is told. Throws std::bad_alloc.
    SaxForwarder(ComPtr<ISAXContentHandler> handler, ComPtr<SaxLocator> locator);

    // The failing code with which the handler stopped the reading, or else a success.
    HRESULT result() const noexcept { return result_; }

    bool start(reader::SaxPlace const& place) override;
    bool startDocument() override;
    bool endDocument() override;
    bool startPrefixMapping(std::wstring_view prefix, std::wstring_view uri) override;
    bool endPrefixMapping(std::wstring_view prefix) override;
    bool startElement(reader::SaxName const& name,
                      std::span<reader::SaxAttribute const> attributes) override;
    bool endElement(reader::SaxName const& name) override;
    bool characters(std::wstring_view text) override;
    bool processingInstruction(std::wstring_view target, std::wstring_view data) override;

private:
    template <class Call>
    bool tell(Call call);

    ComPtr<ISAXContentHandler> handler_;
    ComPtr<SaxLocator> locator_;
    ComPtr<SaxAttributes> attributes_;
    HRESULT result_ = S_OK;
};

} // namespace tibxml::com
