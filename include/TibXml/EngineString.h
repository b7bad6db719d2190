#pragma once

#include <TibXml/platform/BStr.h>
#include <TibXml/platform/CString.h>
#include <TibXml/platform/ComError.h>

#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace tibxml::engine {

/// The sole owner of a string on its way to or from the engine. `_bstr_t` would share it, which
/// nobody here needs and which costs an allocation for every value that is read.
class EngineString {
public:
    /// A null string.
    EngineString() noexcept = default;

    /// A copy of a text; null stays null. `_com_error` with `E_OUTOFMEMORY` when there is no
    /// memory.
    explicit EngineString(wchar_t const* text) : text_{SysAllocString(text)} {
        if (text != nullptr) requireMemory();
    }

    explicit EngineString(std::wstring_view text)
        : text_{SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))} {
        requireMemory();
    }

    explicit EngineString(CString const& text) : EngineString{text.view()} {}

    EngineString(EngineString&& other) noexcept : text_{std::exchange(other.text_, nullptr)} {}

    EngineString& operator=(EngineString&& other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }

    ~EngineString() { SysFreeString(text_); }

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
    void requireMemory() const {
        if (text_ == nullptr) _com_issue_error(E_OUTOFMEMORY);
    }

    BSTR text_ = nullptr;
};

} // namespace tibxml::engine
