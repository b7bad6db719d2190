#pragma once

#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Stream.h>

#include <cstddef>
#include <span>

namespace tibxml::platform {

inline constexpr IID IID_IMemoryBytes{
    0x6b1f3c52, 0x8a0e, 0x4f4e, {0x9d, 0x2b, 0x51, 0x0c, 0x7e, 0x63, 0xa1, 0xd8}};

/// What our streams offer besides, for a reader that would only copy their bytes.
struct IMemoryBytes : IUnknown {
    /// Stores the place and number of the bytes from the position to the end, and moves the
    /// position there. The bytes stay where and as they are until the stream is released.
    /// `E_NOTIMPL` for streams that cannot promise that.
    virtual HRESULT TakeRest(BYTE const** bytes, std::size_t* size) noexcept = 0;
};

} // namespace tibxml::platform

template <>
struct tibxml::platform::InterfaceTraits<tibxml::platform::IMemoryBytes>
    : InterfaceIs<tibxml::platform::IID_IMemoryBytes, IUnknown> {};

namespace tibxml::platform {

/// What the streams made here have in common: nothing is cached, so there is nothing to commit
/// or to take back, and regions cannot be locked.
class StreamObject : public ComObject<IStream, IMemoryBytes> {
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

    HRESULT TakeRest(BYTE const** /*bytes*/, std::size_t* /*size*/) noexcept override {
        return E_NOTIMPL;
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

    /// From the position to the end.
    std::span<BYTE const> rest() const noexcept;

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
