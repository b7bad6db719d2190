#pragma once

#include <TibXml/platform/BStr.h>
#include <TibXml/platform/IUnknown.h>

inline constexpr IID IID_IErrorInfo{
    0x1cf2b120, 0x547d, 0x101b, {0x8e, 0x65, 0x08, 0x00, 0x2b, 0x2b, 0xd1, 0x19}};
inline constexpr IID IID_ICreateErrorInfo{
    0x22f03340, 0x547d, 0x101b, {0x8e, 0x65, 0x08, 0x00, 0x2b, 0x2b, 0xd1, 0x19}};
inline constexpr IID IID_ISupportErrorInfo{
    0xdf0b3d60, 0x548f, 0x101b, {0x8e, 0x65, 0x08, 0x00, 0x2b, 0x2b, 0xd1, 0x19}};

/// What went wrong in a failed call, in words. Every string handed out is the caller's to free and
/// null when it was not set. `E_POINTER` for a null pointer, `E_OUTOFMEMORY`.
class IErrorInfo : public IUnknown {
public:
    /// The interface whose function failed, `GUID_NULL` when it was not set.
    virtual HRESULT GetGUID(GUID* interfaceId) = 0;
    /// The name of the class that failed.
    virtual HRESULT GetSource(BSTR* source) = 0;
    /// What was wrong.
    virtual HRESULT GetDescription(BSTR* description) = 0;
    virtual HRESULT GetHelpFile(BSTR* file) = 0;
    virtual HRESULT GetHelpContext(DWORD* context) = 0;

protected:
    ~IErrorInfo() = default;
};

/// Fills an error information that is being made; strings are copied, null means not set.
class ICreateErrorInfo : public IUnknown {
public:
    virtual HRESULT SetGUID(REFGUID interfaceId) = 0;
    virtual HRESULT SetSource(OLECHAR* source) = 0;
    virtual HRESULT SetDescription(OLECHAR* description) = 0;
    virtual HRESULT SetHelpFile(OLECHAR* file) = 0;
    virtual HRESULT SetHelpContext(DWORD context) = 0;

protected:
    ~ICreateErrorInfo() = default;
};

/// What an object offers to say for which of its interfaces it leaves error information.
class ISupportErrorInfo : public IUnknown {
public:
    /// `S_OK` when it does for this one, `S_FALSE` when not.
    virtual HRESULT InterfaceSupportsErrorInfo(REFIID iid) = 0;

protected:
    ~ISupportErrorInfo() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<IErrorInfo> : InterfaceIs<IID_IErrorInfo, IUnknown> {};

template <>
struct tibxml::platform::InterfaceTraits<ICreateErrorInfo>
    : InterfaceIs<IID_ICreateErrorInfo, IUnknown> {};

template <>
struct tibxml::platform::InterfaceTraits<ISupportErrorInfo>
    : InterfaceIs<IID_ISupportErrorInfo, IUnknown> {};

/// A new error information without content, which also offers `IErrorInfo`; the caller releases it.
/// `E_POINTER` when `info` is null, `E_OUTOFMEMORY`.
TIBXML_API HRESULT CreateErrorInfo(ICreateErrorInfo** info) noexcept;

/// Leaves error information for the maker of the failing call on this thread, in place of what was
/// there; null leaves none. The thread keeps a reference until the information is taken, replaced
/// or the thread ends. `reserved` has to be 0, else `E_INVALIDARG`.
TIBXML_API HRESULT SetErrorInfo(ULONG reserved, IErrorInfo* info) noexcept;

/// Takes the thread's error information away: the caller releases it, and the next call finds none,
/// which is `S_FALSE` and a null pointer. `E_INVALIDARG` when `reserved` is not 0 or `info` is
/// null.
TIBXML_API HRESULT GetErrorInfo(ULONG reserved, IErrorInfo** info) noexcept;

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
