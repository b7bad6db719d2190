#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/WideNumber.h>

#include <cwchar>

using tibxml::engine::EngineString;
using tibxml::platform::doubleText;
using tibxml::platform::IntegerText;
using tibxml::platform::integerText;
using tibxml::platform::NumberText;

namespace {

using GeometryText = NumberText<4 * 11 + 3>; ///< four numbers and the commas between them

void append(GeometryText& text, LONG number) noexcept {
    IntegerText const digits = integerText(number);
    for (wchar_t const digit : digits.view()) {
        text.append(digit);
    }
}

/// Points and sizes have one form, and one name when they cannot be written.
EngineString pairText(LONG first, LONG second) {
    GeometryText text;
    text.append(L'(');
    append(text, first);
    text.append(L',');
    append(text, second);
    text.append(L')');
    return EngineString{text.view()};
}

bool equal(wchar_t const* left, wchar_t const* right) noexcept {
    return left != nullptr && right != nullptr && std::wcscmp(left, right) == 0;
}

} // namespace

void WXmlValueAccessor::SetBool(bool value) {
    Write(EngineString{value ? L"true" : L"false"}, L"bool");
}

void WXmlValueAccessor::SetInt(int value) {
    Write(EngineString{integerText(value).view()}, L"int");
}

void WXmlValueAccessor::SetIntPtr(__int64 value) {
    Write(EngineString{integerText(value).view()}, L"intptr");
}

void WXmlValueAccessor::SetUIntPtr(unsigned long long value) {
    Write(EngineString{integerText(value).view()}, L"uintptr_t");
}

void WXmlValueAccessor::SetDouble(double value) {
    Write(EngineString{doubleText(value).view()}, L"double");
}

void WXmlValueAccessor::SetString(wchar_t const* value) {
    Write(EngineString{value}, L"string");
}

void WXmlValueAccessor::SetPoint(CPoint value) {
    Write(pairText(value.x, value.y), L"rect");
}

void WXmlValueAccessor::SetSize(CSize value) {
    Write(pairText(value.cx, value.cy), L"rect");
}

void WXmlValueAccessor::SetRect(CRect value) {
    GeometryText text;
    append(text, value.left);
    for (LONG const number : {value.top, value.right, value.bottom}) {
        text.append(L',');
        append(text, number);
    }
    Write(EngineString{text.view()}, L"rect");
}

void WXmlValueAccessor::SetBool(bool value, bool defaultValue) {
    return value == defaultValue ? Clear() : SetBool(value);
}

void WXmlValueAccessor::SetInt(int value, int defaultValue) {
    return value == defaultValue ? Clear() : SetInt(value);
}

void WXmlValueAccessor::SetIntPtr(__int64 value, __int64 defaultValue) {
    return value == defaultValue ? Clear() : SetIntPtr(value);
}

void WXmlValueAccessor::SetDouble(double value, double defaultValue) {
    return value == defaultValue ? Clear() : SetDouble(value);
}

void WXmlValueAccessor::SetString(wchar_t const* value, wchar_t const* defaultValue) {
    return equal(value, defaultValue) ? Clear() : SetString(value);
}

void WXmlValueAccessor::SetPoint(CPoint value, CPoint defaultValue) {
    return value == defaultValue ? Clear() : SetPoint(value);
}

void WXmlValueAccessor::SetSize(CSize value, CSize defaultValue) {
    return value == defaultValue ? Clear() : SetSize(value);
}

void WXmlValueAccessor::SetRect(CRect value, CRect defaultValue) {
    return EqualRect(&value, &defaultValue) != 0 ? Clear() : SetRect(value);
}
