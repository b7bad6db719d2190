#include <TibXml/platform/StreamObject.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <new>

namespace tibxml::platform {

namespace {

/// Bytes that belong to other code.
class BorrowedStream final : public MemoryReader {
public:
    BorrowedStream(std::span<BYTE const> bytes, ULONGLONG position) noexcept
        : MemoryReader{position, STGM_READ},
          bytes_{bytes} {}

    HRESULT Write(void const* /*buffer*/, ULONG /*count*/, ULONG* done) noexcept override {
        report(done, 0);
        return STG_E_ACCESSDENIED;
    }

    HRESULT SetSize(ULARGE_INTEGER /*size*/) noexcept override { return STG_E_ACCESSDENIED; }

    HRESULT Clone(IStream** clone) noexcept override {
        if (clone == nullptr) return STG_E_INVALIDPOINTER;
        *clone = new (std::nothrow) BorrowedStream{bytes_, position()};
        return *clone == nullptr ? E_OUTOFMEMORY : S_OK;
    }

    HRESULT TakeRest(BYTE const** bytes, std::size_t* size) noexcept override {
        auto const left = rest();
        *bytes = left.data();
        *size = left.size();
        advance(left.size());
        return S_OK;
    }

private:
    std::span<BYTE const> bytes() const noexcept override { return bytes_; }

    std::span<BYTE const> bytes_;
};

/// Writes to a stream that may be a caller's, and so may throw.
HRESULT writeTo(IStream& target, BYTE const* bytes, ULONG count, ULONG& done) noexcept {
    try {
        return target.Write(bytes, count, &done);
    } catch (std::bad_alloc const&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return STG_E_WRITEFAULT;
    }
}

} // namespace

HRESULT StreamObject::CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                             ULARGE_INTEGER* written) noexcept {
    if (target == nullptr) return STG_E_INVALIDPOINTER;
    std::array<BYTE, 16384> piece; // NOLINT(*-member-init): read into before it is written from
    ULONGLONG in = 0;
    ULONGLONG out = 0;
    HRESULT result = S_OK;
    while (result == S_OK && in < count.QuadPart) {
        auto const wanted = std::min<ULONGLONG>(piece.size(), count.QuadPart - in);
        ULONG got = 0;
        ULONG put = 0;
        result = Read(piece.data(), static_cast<ULONG>(wanted), &got);
        in += got;
        auto const wrote = got == 0 ? S_OK : writeTo(*target, piece.data(), got, put);
        out += put;
        if (FAILED(wrote)) result = wrote;
    }
    report(read, in);
    report(written, out);
    return FAILED(result) ? result : S_OK;
}

HRESULT MemoryReader::Read(void* buffer, ULONG count, ULONG* done) noexcept {
    report(done, 0);
    if (buffer == nullptr) return STG_E_INVALIDPOINTER;
    auto const left = rest();
    auto const got = std::min<ULONGLONG>(count, left.size());
    if (got != 0) std::memcpy(buffer, left.data(), got);
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

std::span<BYTE const> MemoryReader::rest() const noexcept {
    auto const all = bytes();
    return all.subspan(static_cast<std::size_t>(std::min<ULONGLONG>(position_, all.size())));
}

LONGLONG MemoryReader::startOf(DWORD origin) const noexcept {
    if (origin == STREAM_SEEK_SET) return 0;
    return static_cast<LONGLONG>(origin == STREAM_SEEK_CUR ? position_ : bytes().size());
}

IStream* borrowedStream(void const* bytes, std::size_t size) noexcept {
    return new (std::nothrow) BorrowedStream{{static_cast<BYTE const*>(bytes), size}, 0};
}

} // namespace tibxml::platform
