// Where a parse stands, as a handler asks for it.
#pragma once

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include <TibXml/engine/ISAXLocator.h>
#include <TibXml/platform/ComObject.h>

#include <com/LiveObjects.h>
#include <reader/SaxReader.h>

namespace tibxml::com {

// One per parse. A handler may keep it beyond that.
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

} // namespace tibxml::com
