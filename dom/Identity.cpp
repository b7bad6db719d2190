#include "Identity.h"

namespace tibxml::dom {

HRESULT askIdentity(IUnknown* object, IUnknown*& identity) {
    identity = nullptr;
    if (object == nullptr) return S_OK;
    void* found = nullptr;
    HRESULT const code = object->QueryInterface(IID_IUnknown, &found);
    if (FAILED(code) || found == nullptr) return code;
    identity = static_cast<IUnknown*>(found);
    identity->Release();
    return code;
}

} // namespace tibxml::dom
