#pragma once

// What the C library has and says in another way than on Windows.

#include <TibXml/platform/WideNumber.h>
#include <TibXml/platform/WindowsTypes.h>

#include <cerrno>
#include <cwchar>

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own names

/// The number at the beginning of a text: white space in front is skipped, what follows the number
/// is ignored, the decimal separator is that of the current C locale. 0 when there is no number,
/// and for null.
inline double _wtof(wchar_t const* text) noexcept {
    return text == nullptr ? 0.0 : std::wcstod(text, nullptr);
}

/// The decimal integer at the beginning of a text, as `tibxml::platform::parseInt32` has it. 0 when
/// there is none, and for null.
inline int _wtoi(wchar_t const* text) noexcept {
    wchar_t const* end = nullptr;
    return text == nullptr ? 0 : tibxml::platform::parseInt32(text, &end);
}

// NOLINTEND(bugprone-reserved-identifier)

namespace tibxml::platform {

/// The result code for an error number of the C library (`errno`): the code that Windows has for
/// the same mishap, `E_FAIL` where it has none. Always a failure, also for 0.
constexpr HRESULT resultFromErrno(int error) noexcept {
    // The numbers on the right are the system's own error numbers on Windows.
    switch (error) {
    case ENOENT: return HRESULT_FROM_WIN32(2);
    case ENOTDIR: return HRESULT_FROM_WIN32(3);
    case EMFILE:
    case ENFILE: return HRESULT_FROM_WIN32(4);
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR: return E_ACCESSDENIED;
    case EBADF: return HRESULT_FROM_WIN32(6);
    case ENOMEM: return E_OUTOFMEMORY;
    case EBUSY:
    case ETXTBSY: return HRESULT_FROM_WIN32(32);
    case EEXIST: return HRESULT_FROM_WIN32(80);
    case EINVAL: return E_INVALIDARG;
    case EPIPE: return HRESULT_FROM_WIN32(109);
    case ENOSPC:
    case EDQUOT: return HRESULT_FROM_WIN32(112);
    case ENAMETOOLONG: return HRESULT_FROM_WIN32(206);
    case EFBIG: return HRESULT_FROM_WIN32(223);
    case EIO: return HRESULT_FROM_WIN32(1117);
    case ELOOP: return HRESULT_FROM_WIN32(1921);
    default: return E_FAIL;
    }
}

} // namespace tibxml::platform
