#include "MemoryReader.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using tibxml::platform::MemoryReader;
using tibxml::platform::report;
using Bytes = std::vector<BYTE>;

/// Bytes that clones have in common, and that grow with what is written.
class MemoryStream final : public MemoryReader {
public:
    MemoryStream(std::shared_ptr<Bytes> bytes, ULONGLONG position) noexcept
        : MemoryReader{position, STGM_READWRITE},
          bytes_{std::move(bytes)} {}

    HRESULT Write(void const* buffer, ULONG count, ULONG* done) noexcept override {
        report(done, 0);
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        if (count == 0) return S_OK;
        if (position() > longest) return STG_E_MEDIUMFULL;
        auto const resized = resize(std::max<ULONGLONG>(bytes_->size(), position() + count));
        if (FAILED(resized)) return resized;
        std::memcpy(bytes_->data() + position(), buffer, count);
        advance(count);
        report(done, count);
        return S_OK;
    }

    HRESULT SetSize(ULARGE_INTEGER size) noexcept override { return resize(size.QuadPart); }

    HRESULT Clone(IStream** clone) noexcept override {
        if (clone == nullptr) return STG_E_INVALIDPOINTER;
        *clone = new (std::nothrow) MemoryStream{bytes_, position()};
        return *clone == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    static constexpr auto longest = static_cast<ULONGLONG>(std::numeric_limits<LONGLONG>::max()) -
                                    std::numeric_limits<ULONG>::max();

    std::span<BYTE const> bytes() const noexcept override { return *bytes_; }

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
