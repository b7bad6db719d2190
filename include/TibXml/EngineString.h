#pragma once

#include <TibXml/platform/BStr.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/ComError.h>

#include <cstddef>
#include <cwchar>
#include <limits>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace tibxml::engine {

/// The owner of a string on its way to or from the engine. `_bstr_t` would share it, which is not
/// needed here and costs an allocation for every value that is read. Names, numbers and most paths
/// are short: those lie in the object itself, laid out as such a string is, so that passing one
/// costs no allocation at all.
///
/// For the library alone. Callers see it because a value accessor holds the name of its attribute
/// so, by value.
class EngineString {
public:
    /// A null string.
    EngineString() noexcept = default;

    /// A copy of a text; null stays null. `_com_error` with `E_OUTOFMEMORY` when there is no
    /// memory.
    explicit EngineString(wchar_t const* text) {
        if (text != nullptr) assign(text);
    }

    explicit EngineString(std::wstring_view text) { assign(text); }

    explicit EngineString(CString const& text) : EngineString{text.view()} {}

    EngineString(EngineString const& other) {
        if (other.text_ != nullptr) assign(other.view());
    }

    EngineString(EngineString&& other) noexcept { takeFrom(other); }

    EngineString& operator=(EngineString const& other) {
        if (this != &other) *this = EngineString{other};
        return *this;
    }

    EngineString& operator=(EngineString&& other) noexcept {
        if (this != &other) {
            freeText();
            takeFrom(other);
        }
        return *this;
    }

    ~EngineString() { freeText(); }

    /// The string for a call that only reads it.
    BSTR get() const noexcept { return text_; }

    /// The place where a call stores a string for this to own, which is null so far.
    BSTR* address() noexcept { return &text_; }

    /// The characters, with a NUL after them even when the string is null.
    std::wstring_view view() const noexcept {
        return text_ == nullptr ? std::wstring_view{L""}
                                : std::wstring_view{text_, SysStringLen(text_)};
    }

    /// A copy for the caller; `_com_error` with `E_OUTOFMEMORY` when there is no room for it.
    CString toCString() const {
        try {
            return CString{view()};
        } catch (std::bad_alloc const&) {
            _com_issue_error(E_OUTOFMEMORY);
        } catch (std::length_error const&) {
            _com_issue_error(E_OUTOFMEMORY);
        }
    }

private:
    static constexpr std::size_t shortCapacity = 31;

    /// The layout of a string of the engine's: its length in bytes right before the characters.
    struct ShortText {
        UINT bytes;
        wchar_t characters[shortCapacity + 1];
    };

    static_assert(offsetof(ShortText, characters) == sizeof(UINT));

    bool isShort() const noexcept { return text_ == short_.characters; }

    void assign(std::wstring_view text) {
        if (text.size() <= shortCapacity) return assignShort(text);
        if (text.size() > std::numeric_limits<UINT>::max()) _com_issue_error(E_OUTOFMEMORY);
        text_ = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        if (text_ == nullptr) _com_issue_error(E_OUTOFMEMORY);
    }

    void assignShort(std::wstring_view text) noexcept {
        short_.bytes = static_cast<UINT>(text.size() * sizeof(wchar_t));
        // Not std::memcpy, which the compiler would spell out for so few characters, and slowly so.
        if (!text.empty()) std::wmemcpy(short_.characters, text.data(), text.size());
        short_.characters[text.size()] = L'\0';
        text_ = short_.characters;
    }

    void takeFrom(EngineString& other) noexcept {
        if (other.isShort()) {
            assignShort(other.view());
        } else {
            text_ = other.text_;
        }
        other.text_ = nullptr;
    }

    void freeText() noexcept {
        if (!isShort()) SysFreeString(text_);
    }

    BSTR text_ = nullptr;

    /// Written only when it is used; a member of a union need not be before.
    union {
        ShortText short_;
    };
};

} // namespace tibxml::engine
