#pragma once

#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Stream.h>

#include <cstddef>
#include <span>

namespace tibxml::platform {

/// What the streams made here have in common: nothing is cached, so there is nothing to commit
/// or to take back, and regions cannot be locked.
class StreamObject : public ComObject<IStream> {
public:
    HRESULT CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                   ULARGE_INTEGER* written) noexcept override;

    HRESULT Commit(DWORD /*flags*/) noexcept override { return S_OK; }

    HRESULT Revert() noexcept override { return E_NOTIMPL; }

    HRESULT LockRegion(ULARGE_INTEGER /*offset*/, ULARGE_INTEGER /*count*/,
                       DWORD /*type*/) noexcept override {
        return STG_E_INVALIDFUNCTION;
    }

    HRESULT UnlockRegion(ULARGE_INTEGER /*offset*/, ULARGE_INTEGER /*count*/,
                         DWORD /*type*/) noexcept override {
        return STG_E_INVALIDFUNCTION;
    }
};

/// Stores a count where the caller wants it, which may be nowhere.
template <class Number, class Count>
void report(Number* target, Count count) noexcept {
    if (target != nullptr) *target = static_cast<Number>(count);
}

inline void report(ULARGE_INTEGER* target, ULONGLONG count) noexcept {
    if (target != nullptr) target->QuadPart = count;
}

/// The reading half of a stream over bytes in memory: a position in them.
class MemoryReader : public StreamObject {
public:
    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept final;
    HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) noexcept final;
    HRESULT Stat(STATSTG* status, DWORD flags) noexcept final;

protected:
    /// `access` is what `Stat` reports of it.
    MemoryReader(ULONGLONG position, DWORD access) noexcept
        : position_{position},
          access_{access} {}

    ULONGLONG position() const noexcept { return position_; }

    void advance(ULONGLONG count) noexcept { position_ += count; }

private:
    virtual std::span<BYTE const> bytes() const noexcept = 0;

    LONGLONG startOf(DWORD origin) const noexcept;

    ULONGLONG position_; // may be beyond the end
    DWORD access_;
};

/// A new stream that reads `size` bytes where they are, positioned at the start; they must stay as
/// they are while the stream or a clone of it is in use. `bytes` may be null when `size` is 0.
/// Writing and cutting are refused with `STG_E_ACCESSDENIED`. The caller releases it. Null when
/// memory is exhausted.
IStream* borrowedStream(void const* bytes, std::size_t size) noexcept;

} // namespace tibxml::platform
