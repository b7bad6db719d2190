#include "MemoryReader.h"

#include <algorithm>
#include <cstring>

namespace tibxml::platform {

HRESULT MemoryReader::Read(void* buffer, ULONG count, ULONG* done) noexcept {
    report(done, 0);
    if (buffer == nullptr) return STG_E_INVALIDPOINTER;
    auto const all = bytes();
    auto const left = all.size() - std::min<ULONGLONG>(position_, all.size());
    auto const got = std::min<ULONGLONG>(count, left);
    if (got != 0) std::memcpy(buffer, all.data() + position_, got);
    position_ += got;
    report(done, got);
    return got == count ? S_OK : S_FALSE;
}

HRESULT MemoryReader::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) noexcept {
    LONGLONG target = 0;
    if (origin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
    if (__builtin_add_overflow(startOf(origin), move.QuadPart, &target) || target < 0)
        return STG_E_INVALIDFUNCTION;
    position_ = static_cast<ULONGLONG>(target);
    report(position, position_);
    return S_OK;
}

HRESULT MemoryReader::Stat(STATSTG* status, DWORD /*flags*/) noexcept {
    if (status == nullptr) return STG_E_INVALIDPOINTER;
    *status = {};
    status->type = STGTY_STREAM;
    status->cbSize.QuadPart = bytes().size();
    status->grfMode = access_;
    return S_OK;
}

LONGLONG MemoryReader::startOf(DWORD origin) const noexcept {
    if (origin == STREAM_SEEK_SET) return 0;
    return static_cast<LONGLONG>(origin == STREAM_SEEK_CUR ? position_ : bytes().size());
}

} // namespace tibxml::platform
