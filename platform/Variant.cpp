#include <TibXml/platform/Variant.h>

namespace {

bool ownsNothing(VARTYPE type) noexcept {
    switch (type) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_I2:
    case VT_I4:
    case VT_R8:
    case VT_ERROR:
    case VT_BOOL:
    case VT_UI1:
    case VT_INT: return true;
    default: return (type & VT_BYREF) != 0;
    }
}

bool holdsArray(VARTYPE type) noexcept {
    return (type & (VT_ARRAY | VT_BYREF)) == VT_ARRAY;
}

bool holdsObject(VARTYPE type) noexcept {
    return type == VT_UNKNOWN || type == VT_DISPATCH;
}

HRESULT freeContent(VARIANT const& variant) noexcept {
    if (ownsNothing(variant.vt)) return S_OK;
    if (holdsArray(variant.vt)) return SafeArrayDestroy(variant.parray);
    if (variant.vt == VT_BSTR) {
        SysFreeString(variant.bstrVal);
        return S_OK;
    }
    if (!holdsObject(variant.vt)) return DISP_E_BADVARTYPE;
    if (variant.punkVal != nullptr) variant.punkVal->Release();
    return S_OK;
}

HRESULT copyString(BSTR source, BSTR& copy) noexcept {
    copy = source == nullptr ? nullptr : SysAllocStringLen(source, SysStringLen(source));
    return source != nullptr && copy == nullptr ? E_OUTOFMEMORY : S_OK;
}

/// Turns a bitwise copy of a variant into one that owns what it holds.
HRESULT ownContent(VARIANT& copy) noexcept {
    if (ownsNothing(copy.vt)) return S_OK;
    if (holdsArray(copy.vt)) return SafeArrayCopy(copy.parray, &copy.parray);
    if (copy.vt == VT_BSTR) return copyString(copy.bstrVal, copy.bstrVal);
    if (!holdsObject(copy.vt)) return DISP_E_BADVARTYPE;
    if (copy.punkVal != nullptr) copy.punkVal->AddRef();
    return S_OK;
}

} // namespace

void VariantInit(VARIANT* variant) noexcept {
    variant->vt = VT_EMPTY;
}

HRESULT VariantClear(VARIANT* variant) noexcept {
    if (variant == nullptr) return E_INVALIDARG;
    auto const freed = freeContent(*variant);
    if (SUCCEEDED(freed)) variant->vt = VT_EMPTY;
    return freed;
}

HRESULT VariantCopy(VARIANT* target, VARIANT const* source) noexcept {
    if (target == nullptr || source == nullptr) return E_INVALIDARG;
    if (target == source) return S_OK;
    VARIANT copy = *source;
    auto const owned = ownContent(copy);
    if (FAILED(owned)) return owned;
    auto const cleared = VariantClear(target);
    if (FAILED(cleared)) {
        VariantClear(&copy);
        return cleared;
    }
    *target = copy;
    return S_OK;
}
