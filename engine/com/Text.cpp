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

std::wstring_view viewOf(BSTR text) noexcept {
    if (text == nullptr) return {};
    return {text, SysStringLen(text)};
}

bool isXmlText(std::wstring_view text) noexcept {
    return std::all_of(text.begin(), text.end(), isXmlCharacter);
}

std::string xmlText(BSTR text) {
    std::wstring_view const wide = viewOf(text);
    if (!isXmlText(wide))
        throw Failure{E_INVALIDARG, "the text holds a character that XML cannot hold"};
    std::string utf8;
    platform::appendUtf8(utf8, wide);
    return utf8;
}

void normalizeLineEnds(std::string& text) {
    if (text.find('\r') == std::string::npos) return;
    std::size_t kept = 0;
    for (std::size_t i = 0; i != text.size(); ++i) {
        bool const isReturn = text[i] == '\r';
        if (isReturn && i + 1 != text.size() && text[i + 1] == '\n') continue;
        text[kept++] = isReturn ? '\n' : text[i];
    }
    text.resize(kept);
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
