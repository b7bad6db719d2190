#include <TibXml/tibutils/String.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

using TibUtils::String::ToStringW;

template <class Number>
class ToStringOfType : public testing::Test {};

using Numbers = testing::Types<int, unsigned, long, unsigned long, long long, unsigned long long,
                               std::int64_t, std::uint64_t, short, unsigned short>;
TYPED_TEST_SUITE(ToStringOfType, Numbers);

TYPED_TEST(ToStringOfType, WritesPlainDigits) {
    using Limits = std::numeric_limits<TypeParam>;
    for (TypeParam const number : {TypeParam{0}, TypeParam{7}, TypeParam{10}, TypeParam{12345},
                                   Limits::min(), Limits::max(), TypeParam(Limits::max() - 1)}) {
        EXPECT_EQ(std::wstring(ToStringW(number).view()), std::to_wstring(number));
    }
}

TEST(ToStringW, WritesTheGreatestAndTheLeastNumber) {
    EXPECT_EQ(ToStringW(std::numeric_limits<std::uint64_t>::max()), L"18446744073709551615");
    EXPECT_EQ(ToStringW(std::numeric_limits<std::int64_t>::max()), L"9223372036854775807");
    EXPECT_EQ(ToStringW(std::numeric_limits<std::int64_t>::min()), L"-9223372036854775808");
    EXPECT_EQ(ToStringW(-1), L"-1");
}

} // namespace
