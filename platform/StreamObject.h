#pragma once

#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Stream.h>

namespace tibxml::platform {

/// What the streams of this folder have in common: nothing is cached, so there is nothing to commit
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

} // namespace tibxml::platform
