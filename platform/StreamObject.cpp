#include "StreamObject.h"

#include <algorithm>
#include <array>

namespace tibxml::platform {

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
        auto const wrote = got == 0 ? S_OK : target->Write(piece.data(), got, &put);
        out += put;
        if (FAILED(wrote)) result = wrote;
    }
    report(read, in);
    report(written, out);
    return FAILED(result) ? result : S_OK;
}

} // namespace tibxml::platform
