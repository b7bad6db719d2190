#include <TibXml/platform/BorrowedStream.h>

#include "MemoryReader.h"

#include <new>

namespace tibxml::platform {

namespace {

/// Bytes that belong to somebody else.
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

private:
    std::span<BYTE const> bytes() const noexcept override { return bytes_; }

    std::span<BYTE const> bytes_;
};

} // namespace

IStream* borrowedStream(void const* bytes, std::size_t size) noexcept {
    return new (std::nothrow) BorrowedStream{{static_cast<BYTE const*>(bytes), size}, 0};
}

} // namespace tibxml::platform
