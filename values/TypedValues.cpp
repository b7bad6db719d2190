#include "ValueText.h"

#include <TibXml/WXmlValueAccessor.h>
#include <TibXml/platform/WideNumber.h>

#include <cwchar>

using namespace tibxml::values;
using TibUtils::optional;
using tibxml::engine::EngineString;
using tibxml::platform::doubleText;
using tibxml::platform::integerText;
using tibxml::platform::IntegerText;
using tibxml::platform::NumberText;

namespace {

/// The value of a target, which may be none, by the way its type reads.
template <class Value>
optional<Value> parsed(WXmlNodePtr const& target, optional<Value> (*parse)(std::wstring_view)) {
    if (!target) return {};
    return parse(textOf(target).view());
}

/// A number as another type of the same width, or a wider one.
template <class To, class From>
optional<To> converted(optional<From> const& number) {
    if (!number) return {};
    return static_cast<To>(*number);
}

template <class Value>
Value require(optional<Value> value, wchar_t const* typeName) {
    if (!value) throw WXmlValueTypeNotFoundException{typeName};
    return *std::move(value);
}

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

template <>
optional<bool> WXmlValueAccessor::Get<bool>() const {
    return parsed<bool>(GetNodeForReading(), parseBool);
}

template <>
optional<int> WXmlValueAccessor::Get<int>() const {
    return parsed<int>(GetNodeForReading(), parseInt);
}

template <>
optional<long long> WXmlValueAccessor::Get<long long>() const {
    return parsed<__int64>(GetNodeForReading(), parseInt64);
}

template <>
optional<long> WXmlValueAccessor::Get<long>() const {
    if constexpr (sizeof(long) == sizeof(int)) {
        return converted<long>(Get<int>());
    } else {
        return converted<long>(Get<long long>());
    }
}

template <>
optional<unsigned long long> WXmlValueAccessor::Get<unsigned long long>() const {
    return converted<unsigned long long>(Get<long long>());
}

template <>
optional<unsigned long> WXmlValueAccessor::Get<unsigned long>() const {
    return converted<unsigned long>(Get<long>());
}

template <>
optional<double> WXmlValueAccessor::Get<double>() const {
    return parsed<double>(GetNodeForReading(), parseDouble);
}

template <>
optional<CString> WXmlValueAccessor::Get<CString>() const {
    WXmlNodePtr const target = GetNodeForReading();
    if (!target) return {};
    return GetNodeTextValue(target);
}

template <>
optional<CPoint> WXmlValueAccessor::Get<CPoint>() const {
    return parsed<CPoint>(GetNodeForReading(), parsePoint);
}

template <>
optional<CSize> WXmlValueAccessor::Get<CSize>() const {
    return parsed<CSize>(GetNodeForReading(), parseSize);
}

template <>
optional<CRect> WXmlValueAccessor::Get<CRect>() const {
    return parsed<CRect>(GetNodeForReading(), parseRect);
}

bool WXmlValueAccessor::GetBool(bool fallback) const {
    return Get<bool>().value_or(fallback);
}

int WXmlValueAccessor::GetInt(int fallback) const {
    return Get<int>().value_or(fallback);
}

__int64 WXmlValueAccessor::GetIntPtr(__int64 fallback) const {
    return Get<__int64>().value_or(fallback);
}

unsigned long long WXmlValueAccessor::GetUIntPtr(unsigned long long fallback) const {
    return static_cast<unsigned long long>(GetIntPtr(static_cast<__int64>(fallback)));
}

double WXmlValueAccessor::GetDouble(double fallback) const {
    return Get<double>().value_or(fallback);
}

CString WXmlValueAccessor::GetString(wchar_t const* fallback) const {
    auto text = Get<CString>();
    return text ? *std::move(text) : CString{fallback};
}

CPoint WXmlValueAccessor::GetPoint(CPoint fallback) const {
    return Get<CPoint>().value_or(fallback);
}

CSize WXmlValueAccessor::GetSize(CSize fallback) const {
    return Get<CSize>().value_or(fallback);
}

CRect WXmlValueAccessor::GetRect(CRect fallback) const {
    return Get<CRect>().value_or(fallback);
}

bool WXmlValueAccessor::GetBool() const {
    return GetBool_throws();
}

bool WXmlValueAccessor::GetBool_throws() const {
    return require(Get<bool>(), L"bool");
}

int WXmlValueAccessor::GetInt() const {
    return GetInt_throws();
}

int WXmlValueAccessor::GetInt_throws() const {
    return require(Get<int>(), L"int");
}

__int64 WXmlValueAccessor::GetIntPtr() const {
    return GetIntPtr_throws();
}

__int64 WXmlValueAccessor::GetIntPtr_throws() const {
    return require(Get<__int64>(), L"intptr");
}

double WXmlValueAccessor::GetDouble() const {
    return GetDouble_throws();
}

double WXmlValueAccessor::GetDouble_throws() const {
    return require(Get<double>(), L"double");
}

CString WXmlValueAccessor::GetString() const {
    return GetString_throws();
}

CString WXmlValueAccessor::GetString_throws() const {
    return require(Get<CString>(), L"string");
}

CSize WXmlValueAccessor::GetSize() const {
    return GetSize_throws();
}

CSize WXmlValueAccessor::GetSize_throws() const {
    return require(Get<CSize>(), L"size");
}

CPoint WXmlValueAccessor::GetPoint() const {
    return GetPoint_throws();
}

CPoint WXmlValueAccessor::GetPoint_throws() const {
    return require(Get<CPoint>(), L"point");
}

CRect WXmlValueAccessor::GetRect() const {
    return GetRect_throws();
}

CRect WXmlValueAccessor::GetRect_throws() const {
    return require(Get<CRect>(), L"rect");
}

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
