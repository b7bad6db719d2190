#include <TibXml/platform/VariantT.h>

#include <TibXml/platform/ComError.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own name

namespace {

void raiseFailure(HRESULT code) {
    if (FAILED(code)) _com_issue_error(code);
}

} // namespace

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
