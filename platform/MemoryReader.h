#pragma once

#include "StreamObject.h"

#include <span>

namespace tibxml::platform {

/// The reading half of a stream over bytes in memory: a position in them.
class MemoryReader : public StreamObject {
public:
    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept final;
    HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) noexcept final;
    HRESULT Stat(STATSTG* status, DWORD flags) noexcept final;

protected:
    /// `access` is what `Stat` tells of it.
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

} // namespace tibxml::platform
