#include <TibXml/EngineCall.h>
#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/Variant.h>

#include <cstring>
#include <limits>

using tibxml::engine::EngineString;
using tibxml::engine::invoke;
using tibxml::engine::quietly;

namespace {

constexpr VARTYPE arrayOfBytes = VT_ARRAY | VT_UI1;

void check(HRESULT code) {
    if (FAILED(code)) _com_issue_error(code);
}

/// The array that a variant holds or refers to; null when it is not one of bytes.
SAFEARRAY* arrayIn(VARIANT const& value) noexcept {
    if (value.vt == arrayOfBytes) return value.parray;
    if (value.vt != (VT_BYREF | arrayOfBytes) || value.pparray == nullptr) return nullptr;
    return *value.pparray;
}

unsigned long byteCount(SAFEARRAY* array) {
    LONG lower = 0;
    LONG upper = 0;
    check(SafeArrayGetLBound(array, 1, &lower));
    check(SafeArrayGetUBound(array, 1, &upper));
    return static_cast<unsigned long>(LONGLONG{upper} - lower + 1);
}

void copyBytes(SAFEARRAY* array, void* target, unsigned long count) {
    void* bytes = nullptr;
    check(SafeArrayAccessData(array, &bytes));
    std::memcpy(target, bytes, count);
    check(SafeArrayUnaccessData(array));
}

/// A variant that owns an array with these bytes; without any array when `data` is null.
_variant_t variantOf(unsigned char const* data, unsigned long size) {
    _variant_t value;
    value.parray = nullptr;
    value.vt = arrayOfBytes;
    if (data == nullptr) return value;
    if (size > std::numeric_limits<ULONG>::max()) _com_issue_error(E_OUTOFMEMORY);
    value.parray = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(size));
    void* bytes = nullptr;
    check(value.parray == nullptr ? E_OUTOFMEMORY : SafeArrayAccessData(value.parray, &bytes));
    std::memcpy(bytes, data, size);
    check(SafeArrayUnaccessData(value.parray));
    return value;
}

} // namespace

unsigned long WXmlValueAccessor::GetBinary(unsigned char* buffer, unsigned long capacity) const {
    WXmlNodePtr const target = GetNodeForReading();
    if (!target) throw WXmlValueTypeNotFoundException{L"binary"};
    _variant_t value;
    invoke(target, &IXMLDOMNode::get_nodeTypedValue, &value);
    SAFEARRAY* const array = arrayIn(value);
    if (SafeArrayGetDim(array) == 0) return 0;
    VARTYPE type = VT_EMPTY;
    check(SafeArrayGetVartype(array, &type));
    if (type != VT_UI1) _com_issue_error(E_INVALIDARG);
    unsigned long const count = byteCount(array);
    if (count != 0 && count <= capacity && buffer != nullptr) copyBytes(array, buffer, count);
    return count;
}

void WXmlValueAccessor::SetBinary(unsigned char const* data, unsigned long size) noexcept {
    quietly(S_OK, [&] {
        WXmlNodePtr const target = GetNodeForWriting();
        if (!target) throw WXmlValueTypeNotFoundException{L"binary"};
        // Whether it worked shows by the next call, which refuses bytes where they do not belong.
        target->put_dataType(EngineString{L"bin.base64"}.get());
        return target->put_nodeTypedValue(variantOf(data, size));
    });
}
