#include <TibXml/platform/ErrnoResult.h>

#include <cerrno>

namespace tibxml::platform {

HRESULT resultFromErrno(int error) noexcept {
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
