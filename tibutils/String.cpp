#include <TibXml/tibutils/String.h>

#include <algorithm>
#include <charconv>
#include <limits>

namespace TibUtils::String {
namespace {

template <class Number>
CString digitsOf(Number number) {
    // One digit more than the type always holds, and the sign.
    constexpr int capacity = std::numeric_limits<Number>::digits10 + 2;
    char digits[capacity];
    char const* const end = std::to_chars(digits, digits + capacity, number).ptr;
    wchar_t wide[capacity];
    std::copy(static_cast<char const*>(digits), end, wide);
    return CString(wide, static_cast<int>(end - digits));
}

} // namespace

CString ToStringW(long long number) {
    return digitsOf(number);
}

CString ToStringW(unsigned long long number) {
    return digitsOf(number);
}

} // namespace TibUtils::String
