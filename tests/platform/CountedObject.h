#pragma once

#include <TibXml/platform/IUnknown.h>

/// An object of the test's own that lives on the stack and shows its reference count.
class CountedObject : public IUnknown {
public:
    HRESULT QueryInterface(REFIID iid, void** object) noexcept override {
        *object = iid == IID_IUnknown ? this : nullptr;
        if (*object == nullptr) return E_NOINTERFACE;
        ++references;
        return S_OK;
    }

    ULONG AddRef() noexcept override { return ++references; }

    ULONG Release() noexcept override { return --references; }

    ULONG references = 1;
};
