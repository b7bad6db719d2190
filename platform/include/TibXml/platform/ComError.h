#pragma once

#include <TibXml/platform/BStrT.h>
#include <TibXml/platform/ErrorInfo.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own names

/// The exception for a failed call on an engine object: its result code, and what the engine said
/// about it. Copying never throws.
class TIBXML_API _com_error {
public:
    /// `info` may be null. Its reference becomes this object's; with `addReference` the object
    /// takes one of its own.
    explicit _com_error(HRESULT code, IErrorInfo* info = nullptr,
                        bool addReference = false) noexcept;
    _com_error(_com_error const& other) noexcept;
    _com_error& operator=(_com_error const& other) noexcept;
    virtual ~_com_error() noexcept;

    /// The result code.
    HRESULT Error() const noexcept { return code_; }

    /// What the engine left, with a reference for the caller to release; null when it left nothing.
    IErrorInfo* ErrorInfo() const noexcept;
    /// What was wrong, in the engine's words, and the class that says so; null strings when it left
    /// nothing. They raise `_com_error` with `E_OUTOFMEMORY`.
    _bstr_t Description() const;
    _bstr_t Source() const;
    /// The interface whose function failed, `GUID_NULL` when unknown.
    ::GUID GUID() const noexcept;
    /// A short text for the code alone, never null: "Unknown error 0x8004ABCD" for an unknown one.
    /// It belongs to this object.
    wchar_t const* ErrorMessage() const noexcept;

private:
    HRESULT code_;
    IErrorInfo* info_;
    wchar_t unknown_[28];
};

/// Throws a `_com_error` with this code and information, whose reference it takes over.
[[noreturn]] TIBXML_API void _com_raise_error(HRESULT code, IErrorInfo* info = nullptr);

/// Throws a `_com_error` with this code and nothing else.
[[noreturn]] TIBXML_API void _com_issue_error(HRESULT code);

/// Throws a `_com_error` with this code, and with the thread's error information if `object` says
/// that it leaves some for the interface `iid`; the information is taken away then, and is left
/// where it is otherwise. A null object leaves none.
[[noreturn]] TIBXML_API void _com_issue_errorex(HRESULT code, IUnknown* object, REFIID iid);

// NOLINTEND(bugprone-reserved-identifier)
