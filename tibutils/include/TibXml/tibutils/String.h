#pragma once

#include <TibXml/platform/CString.h>
#include <TibXml/platform/Export.h>

/// Numbers as text: plain decimal digits, after a "-" when negative; no locale takes part. All of
/// them throw `std::bad_alloc`.
namespace TibUtils::String {

TIBXML_API CString ToStringW(long long number);
TIBXML_API CString ToStringW(unsigned long long number);

inline CString ToStringW(long number) {
    return ToStringW(static_cast<long long>(number));
}

inline CString ToStringW(int number) {
    return ToStringW(static_cast<long long>(number));
}

inline CString ToStringW(unsigned long number) {
    return ToStringW(static_cast<unsigned long long>(number));
}

inline CString ToStringW(unsigned number) {
    return ToStringW(static_cast<unsigned long long>(number));
}

} // namespace TibUtils::String
