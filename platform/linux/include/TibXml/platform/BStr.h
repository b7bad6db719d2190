#pragma once

#include <TibXml/platform/Export.h>
#include <TibXml/platform/WindowsTypes.h>

#include <string_view>
#include <utility>

/// A wide string that passes between the engine and its callers: it points to the first of its
/// characters, the number of bytes that they take stands in the four bytes before them, and a NUL
/// follows them. It may hold NULs. A null pointer is a proper, empty string. The holder of one owns
/// it and frees it with `SysFreeString`; a string may be freed on another thread than made it.
using BSTR = OLECHAR*;

/// A copy of a string that ends with its first NUL. Null for null, and when memory is exhausted.
TIBXML_API BSTR SysAllocString(OLECHAR const* text) noexcept;

/// A string of `length` characters, copied from `text`, NULs and all; when `text` is null the
/// characters are left for the caller to write, and only the closing NUL is there. Null when memory
/// is exhausted or the length in bytes does not fit its prefix.
TIBXML_API BSTR SysAllocStringLen(OLECHAR const* text, UINT length) noexcept;

/// Frees a string; null is fine.
TIBXML_API void SysFreeString(BSTR text) noexcept;

/// The number of characters, 0 for null.
TIBXML_API UINT SysStringLen(BSTR text) noexcept;

/// The number of bytes that the characters take, 0 for null.
TIBXML_API UINT SysStringByteLen(BSTR text) noexcept;

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own name

/// Owns a `BSTR`; copies share it. What needs memory raises `_com_error` with `E_OUTOFMEMORY` when
/// there is none. Changing one copy changes the others only where a function says so.
class _bstr_t {
public:
    /// A null string.
    _bstr_t() noexcept = default;
    /// A copy of the text; null gives a null string.
    TIBXML_API _bstr_t(wchar_t const* text);
    /// A copy of the string, or the string itself with `copy` false: it is then owned by this
    /// object and freed even when the constructor fails.
    TIBXML_API _bstr_t(BSTR text, bool copy);

    _bstr_t(_bstr_t const& other) noexcept : shared_{other.shared_} { retain(); }

    _bstr_t(_bstr_t&& other) noexcept : shared_{std::exchange(other.shared_, nullptr)} {}

    ~_bstr_t() { release(); }

    _bstr_t& operator=(_bstr_t const& other) noexcept {
        _bstr_t{other}.swap(*this);
        return *this;
    }

    _bstr_t& operator=(_bstr_t&& other) noexcept {
        _bstr_t{std::move(other)}.swap(*this);
        return *this;
    }

    _bstr_t& operator=(wchar_t const* text) {
        _bstr_t{text}.swap(*this);
        return *this;
    }

    void swap(_bstr_t& other) noexcept { std::swap(shared_, other.shared_); }

    /// The characters, null for a null string; for calls that only read.
    operator wchar_t const*() const noexcept { return text(); }

    operator wchar_t*() const noexcept { return text(); }

    /// Whether this is a null string.
    bool operator!() const noexcept { return text() == nullptr; }

    /// The number of characters.
    unsigned length() const noexcept { return SysStringLen(text()); }

    /// A copy that the caller frees, or the string itself, which stays owned here; null for null.
    TIBXML_API BSTR copy(bool copy = true) const;
    /// The string itself, owned by this object and all its copies.
    TIBXML_API BSTR& GetBSTR();
    /// Makes this a null string and gives the place where a call may store a string for it to own.
    TIBXML_API BSTR* GetAddress();
    /// Replaces the string, in all copies too, by one that they own from now on.
    TIBXML_API void Attach(BSTR text);
    /// Gives the string to the caller to free; this object and all its copies are null afterwards.
    TIBXML_API BSTR Detach();
    /// Replaces the string by a copy of `text`, in all copies too.
    TIBXML_API void Assign(BSTR text);

    /// Comparison of the characters; a null string equals an empty one.
    friend bool operator==(_bstr_t const& left, _bstr_t const& right) noexcept {
        return left.view() == right.view();
    }

    friend bool operator<(_bstr_t const& left, _bstr_t const& right) noexcept {
        return left.view() < right.view();
    }

private:
    struct Shared;

    TIBXML_API BSTR text() const noexcept;
    TIBXML_API void retain() const noexcept;
    TIBXML_API void release() const noexcept;

    std::wstring_view view() const noexcept { return {text(), length()}; }

    Shared& shared();

    Shared* shared_ = nullptr;
};

// NOLINTEND(bugprone-reserved-identifier)
