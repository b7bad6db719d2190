#include "TextOfTarget.h"
#include "ValueParsing.h"

#include <TibXml/WXmlValueAccessor.h>

using TibUtils::optional;
using namespace tibxml::values;

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
