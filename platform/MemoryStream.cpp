#include "StreamObject.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using tibxml::platform::report;
using Bytes = std::vector<BYTE>;

/// A position in bytes that clones have in common.
class MemoryStream final : public tibxml::platform::StreamObject {
public:
    MemoryStream(std::shared_ptr<Bytes> bytes, ULONGLONG position) noexcept
        : bytes_{std::move(bytes)},
          position_{position} {}

    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept override {
        report(done, 0);
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        auto const left = bytes_->size() - std::min<ULONGLONG>(position_, bytes_->size());
        auto const got = std::min<ULONGLONG>(count, left);
        if (got != 0) std::memcpy(buffer, bytes_->data() + position_, got);
        position_ += got;
        report(done, got);
        return got == count ? S_OK : S_FALSE;
    }

    HRESULT Write(void const* buffer, ULONG count, ULONG* done) noexcept override {
        report(done, 0);
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        if (count == 0) return S_OK;
        if (position_ > longest) return STG_E_MEDIUMFULL;
        auto const resized = resize(std::max<ULONGLONG>(bytes_->size(), position_ + count));
        if (FAILED(resized)) return resized;
        std::memcpy(bytes_->data() + position_, buffer, count);
        position_ += count;
        report(done, count);
        return S_OK;
    }

    HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) noexcept override {
        LONGLONG target = 0;
        if (origin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
        if (__builtin_add_overflow(startOf(origin), move.QuadPart, &target) || target < 0)
            return STG_E_INVALIDFUNCTION;
        position_ = static_cast<ULONGLONG>(target);
        report(position, position_);
        return S_OK;
    }

    HRESULT SetSize(ULARGE_INTEGER size) noexcept override { return resize(size.QuadPart); }

    HRESULT Stat(STATSTG* status, DWORD /*flags*/) noexcept override {
        if (status == nullptr) return STG_E_INVALIDPOINTER;
        *status = {};
        status->type = STGTY_STREAM;
        status->cbSize.QuadPart = bytes_->size();
        status->grfMode = STGM_READWRITE;
        return S_OK;
    }

    HRESULT Clone(IStream** clone) noexcept override {
        if (clone == nullptr) return STG_E_INVALIDPOINTER;
        *clone = new (std::nothrow) MemoryStream{bytes_, position_};
        return *clone == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    static constexpr auto longest = static_cast<ULONGLONG>(std::numeric_limits<LONGLONG>::max()) -
                                    std::numeric_limits<ULONG>::max();

    LONGLONG startOf(DWORD origin) const noexcept {
        if (origin == STREAM_SEEK_SET) return 0;
        return static_cast<LONGLONG>(origin == STREAM_SEEK_CUR ? position_ : bytes_->size());
    }

    HRESULT resize(ULONGLONG size) noexcept {
        try {
            bytes_->resize(size);
            return S_OK;
        } catch (std::bad_alloc const&) {
            return E_OUTOFMEMORY;
        } catch (std::length_error const&) {
            return STG_E_MEDIUMFULL;
        }
    }

    std::shared_ptr<Bytes> bytes_;
    ULONGLONG position_;
};

} // namespace

IStream* SHCreateMemStream(BYTE const* bytes, UINT count) noexcept {
    try {
        auto content = std::make_shared<Bytes>();
        if (bytes != nullptr) content->assign(bytes, bytes + count);
        return new MemoryStream{std::move(content), 0};
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}
