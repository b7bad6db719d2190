#include <TibXml/platform/Variant.h>

#include <TibXml/platform/ComError.h>

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

void raiseFailure(HRESULT code) {
    if (FAILED(code)) _com_issue_error(code);
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

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own name

_variant_t::_variant_t(wchar_t const* text) : VARIANT{} {
    bstrVal = SysAllocString(text);
    if (text != nullptr && bstrVal == nullptr) _com_issue_error(E_OUTOFMEMORY);
    vt = VT_BSTR;
}

_variant_t::_variant_t(short number, VARTYPE kind) : VARIANT{} {
    if (kind != VT_I2 && kind != VT_BOOL) _com_issue_error(E_INVALIDARG);
    vt = kind;
    iVal = number;
}

_variant_t::_variant_t(int number, VARTYPE kind) : VARIANT{} {
    if (kind != VT_INT && kind != VT_I4 && kind != VT_ERROR) _com_issue_error(E_INVALIDARG);
    vt = kind;
    intVal = number;
}

_variant_t::_variant_t(bool truth) noexcept : VARIANT{} {
    vt = VT_BOOL;
    boolVal = truth ? VARIANT_TRUE : VARIANT_FALSE;
}

_variant_t::_variant_t(IUnknown* object, bool addReference) noexcept : VARIANT{} {
    vt = VT_UNKNOWN;
    punkVal = object;
    if (addReference && object != nullptr) object->AddRef();
}

_variant_t::_variant_t(VARIANT const& other) : VARIANT{} {
    raiseFailure(VariantCopy(this, &other));
}

_variant_t::_variant_t(_variant_t&& other) noexcept : VARIANT{other.Detach()} {}

_variant_t& _variant_t::operator=(VARIANT const& other) {
    raiseFailure(VariantCopy(this, &other));
    return *this;
}

_variant_t& _variant_t::operator=(_variant_t&& other) noexcept {
    if (this == &other) return *this;
    VariantClear(this);
    static_cast<VARIANT&>(*this) = other.Detach();
    return *this;
}

void _variant_t::Clear() {
    raiseFailure(VariantClear(this));
}

VARIANT _variant_t::Detach() noexcept {
    VARIANT const content = *this;
    vt = VT_EMPTY;
    return content;
}

_variant_t::operator _bstr_t() const {
    if (vt == VT_EMPTY || vt == VT_NULL) return {};
    if (vt != VT_BSTR) _com_issue_error(DISP_E_TYPEMISMATCH);
    return {bstrVal, true};
}

// NOLINTEND(bugprone-reserved-identifier)
