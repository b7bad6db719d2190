#include "Text.h"

#include <algorithm>
#include <limits>
#include <new>

#include <TibXml/platform/Utf.h>

#include "Failure.h"

namespace tibxml::com {

namespace {

bool isXmlCharacter(wchar_t character) noexcept {
    auto const c = static_cast<char32_t>(character);
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return c < 0xD800 || (c > 0xDFFF && c < 0xFFFE) || (c > 0xFFFF && c <= 0x10FFFF);
}

BSTR checked(BSTR text) {
    if (text == nullptr) throw std::bad_alloc{};
    return text;
}

} // namespace

BSTR toBstr(std::string_view utf8) {
    return checked(platform::bstrFromUtf8(utf8));
}

BSTR toBstr(std::wstring_view text) {
    if (text.size() > std::numeric_limits<UINT>::max()) throw std::bad_alloc{};
    return checked(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())));
}

bool isXmlText(std::wstring_view text) noexcept {
    return std::all_of(text.begin(), text.end(), isXmlCharacter);
}

XmlText::XmlText(std::wstring_view text) {
    if (narrowInPlace(text)) return;
    valid_ = isXmlText(text);
    if (valid_) platform::appendUtf8(long_, text);
    view_ = long_;
}

bool XmlText::narrowInPlace(std::wstring_view text) noexcept {
    if (text.size() > short_.size()) return false;
    char* out = short_.data();
    for (wchar_t const c : text) {
        if (c < 0x20 || c > 0x7F) return false;
        *out++ = static_cast<char>(c);
    }
    view_ = {short_.data(), text.size()};
    return true;
}

void XmlText::normalizeLineEnds() {
    if (view_.find('\r') == std::string_view::npos) return; // as all that is converted in place
    std::size_t kept = 0;
    for (std::size_t i = 0; i != long_.size(); ++i) {
        bool const isReturn = long_[i] == '\r';
        if (isReturn && i + 1 != long_.size() && long_[i + 1] == '\n') continue;
        long_[kept++] = isReturn ? '\n' : long_[i];
    }
    long_.resize(kept);
    view_ = long_;
}

void requireValid(XmlText const& text) {
    if (!text.isValid())
        throw Failure{E_INVALIDARG, "the text holds a character that XML cannot hold"};
}

VARIANT stringVariant(std::string_view utf8) {
    VARIANT value;
    VariantInit(&value);
    value.bstrVal = toBstr(utf8);
    value.vt = VT_BSTR;
    return value;
}

BSTR stringIn(VARIANT const& value, HRESULT otherwise) {
    if (value.vt == VT_BSTR) return value.bstrVal;
    if (value.vt == (VT_BYREF | VT_BSTR) && value.pbstrVal != nullptr) return *value.pbstrVal;
    throw Failure{otherwise, "a string is expected"};
}

LONG integerIn(VARIANT const& value, HRESULT otherwise) {
    switch (value.vt) {
    case VT_I2: return value.iVal;
    case VT_I4: return value.lVal;
    case VT_INT: return value.intVal;
    case VT_BOOL: return value.boolVal;
    default: throw Failure{otherwise, "an integer or boolean is expected"};
    }
}

} // namespace tibxml::com
