// What passes from the reader to a handler: its events, and where the parse stands.
#pragma once

#include <algorithm>
#include <limits>
#include <span>
#include <string>
#include <utility>

#include <TibXml/engine/ISAXAttributes.h>
#include <TibXml/engine/ISAXContentHandler.h>
#include <TibXml/engine/ISAXLocator.h>
#include <TibXml/platform/ComObject.h>
#include <com/Measures.h>
#include <reader/SaxReader.h>

#include "ComPtr.h"

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

// Hands to a handler what the reader reports.

// The attributes of one element after the other, as a handler sees them. One object for a whole
// parse: what it shows is replaced for each element.
class SaxAttributes final : public platform::ComObject<ISAXAttributes> {
public:
    SaxAttributes() = default;

    // Shows these until the next call.
    void show(std::span<reader::SaxAttribute const> attributes) noexcept {
        attributes_ = attributes;
    }

    HRESULT getLength(int* length) noexcept override;
    HRESULT getURI(int index, wchar_t const** uri, int* uriLength) noexcept override;
    HRESULT getLocalName(int index, wchar_t const** local, int* localLength) noexcept override;
    HRESULT getQName(int index, wchar_t const** qualified, int* qualifiedLength) noexcept override;
    HRESULT getName(int index, wchar_t const** uri, int* uriLength, wchar_t const** local,
                    int* localLength, wchar_t const** qualified,
                    int* qualifiedLength) noexcept override;
    HRESULT getIndexFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                             int localLength, int* index) noexcept override;
    HRESULT getIndexFromQName(wchar_t const* qualified, int qualifiedLength,
                              int* index) noexcept override;
    HRESULT getType(int index, wchar_t const** type, int* typeLength) noexcept override;
    HRESULT getTypeFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                            int localLength, wchar_t const** type,
                            int* typeLength) noexcept override;
    HRESULT getTypeFromQName(wchar_t const* qualified, int qualifiedLength, wchar_t const** type,
                             int* typeLength) noexcept override;
    HRESULT getValue(int index, wchar_t const** value, int* valueLength) noexcept override;
    HRESULT getValueFromName(wchar_t const* uri, int uriLength, wchar_t const* local,
                             int localLength, wchar_t const** value,
                             int* valueLength) noexcept override;
    HRESULT getValueFromQName(wchar_t const* qualified, int qualifiedLength, wchar_t const** value,
                              int* valueLength) noexcept override;

private:
    ~SaxAttributes() override = default;

    // Answers with a text of the attribute at an index.
    template <class TextOf>
    HRESULT answer(int index, wchar_t const** text, int* length, TextOf textOf) const noexcept;

    // Answers a look-up: the index of the first attribute that is the one.
    template <class IsTheOne>
    HRESULT find(int* index, IsTheOne isTheOne) const noexcept;

    LiveObject live_;
    std::span<reader::SaxAttribute const> attributes_;
};

class SaxForwarder final : public reader::SaxEvents {
public:
    // The handler may be null: then nothing is reported. Throws std::bad_alloc.
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
