#include <TibXml/platform/WideNumber.h>

#include <TibXml/platform/CLibrary.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <filesystem>
#include <limits>
#include <ostream>
#include <random>
#include <string>

namespace {

using namespace tibxml::platform;

struct ParseCase {
    wchar_t const* text;
    std::int64_t value;
    std::size_t consumed;

    /// Without it a test would be named after the addresses in here.
    friend std::ostream& operator<<(std::ostream& out, ParseCase const& parse) {
        return out << testing::PrintToString(parse.text);
    }
};

class ParseInt32 : public testing::TestWithParam<ParseCase> {};

TEST_P(ParseInt32, ReadsAndStops) {
    auto const& [text, value, consumed] = GetParam();
    wchar_t const* end = nullptr;
    EXPECT_EQ(parseInt32(text, &end), value);
    EXPECT_EQ(end, text + consumed);
    EXPECT_EQ(_wtoi(text), value);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ParseInt32,
    testing::Values(
        ParseCase{L"", 0, 0}, ParseCase{L"0", 0, 1}, ParseCase{L"42", 42, 2},
        ParseCase{L" 42", 42, 3}, ParseCase{L"\t\n\r\v\f 42", 42, 8}, ParseCase{L"42 ", 42, 2},
        ParseCase{L"+7", 7, 2}, ParseCase{L"-7", -7, 2}, ParseCase{L"- 7", 0, 0},
        ParseCase{L"+-7", 0, 0}, ParseCase{L"-", 0, 0}, ParseCase{L" +", 0, 0},
        ParseCase{L"abc", 0, 0}, ParseCase{L"12abc", 12, 2}, ParseCase{L"0x10", 0, 1},
        ParseCase{L"007", 7, 3}, ParseCase{L"1,5", 1, 1}, ParseCase{L"2147483647", 2147483647, 10},
        ParseCase{L"2147483648", 2147483647, 10}, ParseCase{L"-2147483648", -2147483648LL, 11},
        ParseCase{L"-2147483649", -2147483648LL, 11}, ParseCase{L"99999999999", 2147483647, 11},
        ParseCase{L"-99999999999999999999999 ", -2147483648LL, 24},
        ParseCase{L"00000000000000000000000001", 1, 26}, ParseCase{L"\u0663", 0, 0}));

class ParseInt64 : public testing::TestWithParam<ParseCase> {};

TEST_P(ParseInt64, ReadsAndStops) {
    auto const& [text, value, consumed] = GetParam();
    wchar_t const* end = nullptr;
    EXPECT_EQ(parseInt64(text, &end), value);
    EXPECT_EQ(end, text + consumed);
}

constexpr auto greatest = std::numeric_limits<std::int64_t>::max();
constexpr auto least = std::numeric_limits<std::int64_t>::min();

INSTANTIATE_TEST_SUITE_P(Cases, ParseInt64,
                         testing::Values(ParseCase{L"", 0, 0},
                                         ParseCase{L"2147483648", 2147483648LL, 10},
                                         ParseCase{L"9223372036854775807", greatest, 19},
                                         ParseCase{L"9223372036854775808", greatest, 19},
                                         ParseCase{L"18446744073709551615", greatest, 20},
                                         ParseCase{L"-9223372036854775807", -greatest, 20},
                                         ParseCase{L"-9223372036854775808", least, 20},
                                         ParseCase{L"-9223372036854775809", least, 20},
                                         ParseCase{L"99999999999999999999999999", greatest, 26},
                                         ParseCase{L" -5x", -5, 3}));

TEST(WideNumber, ParsesAsTheCLibraryDoes) {
    // long has 64 bits here, so its function is the judge of the 64-bit one.
    static_assert(sizeof(long) == 8);
    std::mt19937 random{20240517};
    std::wstring const alphabet = L" \t+-0123456789a.";
    for (int i = 0; i < 20000; ++i) {
        std::wstring text;
        for (auto length = random() % 24; length > 0; --length)
            text += alphabet[random() % alphabet.size()];
        wchar_t const* end = nullptr;
        wchar_t* expectedEnd = nullptr;
        auto const expected = std::wcstol(text.c_str(), &expectedEnd, 10);
        EXPECT_EQ(parseInt64(text.c_str(), &end), expected);
        EXPECT_EQ(end, expectedEnd);
    }
}

TEST(WideNumber, WtoiAndWtofOfNullAreZero) {
    EXPECT_EQ(_wtoi(nullptr), 0);
    EXPECT_EQ(_wtof(nullptr), 0.0);
}

TEST(WideNumber, WtofReadsWhatItCan) {
    EXPECT_EQ(_wtof(L""), 0.0);
    EXPECT_EQ(_wtof(L"abc"), 0.0);
    EXPECT_EQ(_wtof(L"1.5xyz"), 1.5);
    EXPECT_EQ(_wtof(L" \t-2.25e2,"), -225.0);
    EXPECT_EQ(_wtof(L".5"), 0.5);
    EXPECT_TRUE(std::signbit(_wtof(L"-0")));
    EXPECT_TRUE(std::isinf(_wtof(L"inf")));
    EXPECT_TRUE(std::isnan(_wtof(L"nan")));
    EXPECT_TRUE(std::isinf(_wtof(L"1e999")));
}

TEST(WideNumber, WritesIntegers) {
    EXPECT_EQ(integerText(0).view(), L"0");
    EXPECT_EQ(integerText(-1).view(), L"-1");
    EXPECT_EQ(integerText(std::numeric_limits<int>::min()).view(), L"-2147483648");
    EXPECT_EQ(integerText(greatest).view(), L"9223372036854775807");
    EXPECT_EQ(integerText(least).view(), L"-9223372036854775808");
    EXPECT_EQ(integerText(std::numeric_limits<std::uint64_t>::max()).view(),
              L"18446744073709551615");
    EXPECT_EQ(integerText(7ULL).view(), L"7");
    EXPECT_EQ(integerText(static_cast<unsigned char>(200)).view(), L"200");
    EXPECT_STREQ(integerText(42L), L"42");
}

struct DoubleCase {
    double number;
    wchar_t const* text;
};

TEST(WideNumber, WritesIntegersOfEveryLengthAsTheLibraryDoes) {
    auto const expectText = [](std::uint64_t number) {
        auto const negative = static_cast<std::int64_t>(~number);
        EXPECT_EQ(integerText(number).view(), std::to_wstring(number));
        EXPECT_EQ(integerText(negative).view(), std::to_wstring(negative));
    };
    for (std::uint64_t const base : {2U, 10U}) {
        std::uint64_t power = 1;
        for (; power <= std::numeric_limits<std::uint64_t>::max() / base; power *= base) {
            for (std::uint64_t const number : {power - 1, power, power + 1, power * base - 1})
                expectText(number);
        }
        expectText(power);
    }
    expectText(std::numeric_limits<std::uint64_t>::max());
}

TEST(WideNumber, WritesDoublesWithSixDigits) {
    DoubleCase const cases[] = {{0.0, L"0.000000"},
                                {-0.0, L"-0.000000"},
                                {0.1, L"0.100000"},
                                {1.5, L"1.500000"},
                                {-0.25, L"-0.250000"},
                                {0.0000005, L"0.000000"},
                                {0.00000051, L"0.000001"},
                                {2.0000005, L"2.000001"},
                                {999999.9999999, L"1000000.000000"},
                                {1e22, L"10000000000000000000000.000000"},
                                {5e-324, L"0.000000"},
                                {std::numeric_limits<double>::infinity(), L"inf"},
                                {-std::numeric_limits<double>::infinity(), L"-inf"},
                                {std::numeric_limits<double>::quiet_NaN(), L"nan"}};
    for (auto const& [number, text] : cases)
        EXPECT_EQ(doubleText(number).view(), text);
}

std::wstring printed(double number) {
    wchar_t buffer[400];
    auto const length = std::swprintf(buffer, 400, L"%f", number);
    return {buffer, static_cast<std::size_t>(length)};
}

TEST(WideNumber, WritesDoublesAsTheCLibraryDoes) {
    std::mt19937_64 random{4711};
    std::uniform_real_distribution<double> exponent{-10, 308};
    for (int i = 0; i < 5000; ++i) {
        auto const number = std::pow(10.0, exponent(random)) * (i % 2 == 0 ? 1 : -1);
        EXPECT_EQ(doubleText(number).view(), printed(number));
    }
    EXPECT_EQ(doubleText(-std::numeric_limits<double>::max()).view(),
              printed(-std::numeric_limits<double>::max()));
}

/// A locale that is made for the test because few machines have it installed.
class OtherSeparator : public testing::Test {
protected:
    void use(int category, std::string const& locale) {
        auto pattern = (std::filesystem::temp_directory_path() / "tibxml-locale-XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
        auto const command =
            "localedef -i " + locale + " -f UTF-8 " + folder_ + "/made >/dev/null 2>&1";
        auto const made = std::system(command.c_str()) == 0;
        ::setenv("LOCPATH", folder_.c_str(), 1);
        if (!made || std::setlocale(category, "made") == nullptr) GTEST_SKIP() << "no such locale";
    }

    ~OtherSeparator() override {
        std::setlocale(LC_ALL, "C");
        ::unsetenv("LOCPATH");
        std::filesystem::remove_all(folder_);
    }

    std::string folder_;
};

TEST_F(OtherSeparator, IsUsedInBothDirections) {
    use(LC_ALL, "de_DE");
    if (IsSkipped()) return;
    EXPECT_EQ(doubleText(-1.5).view(), L"-1,500000");
    EXPECT_EQ(doubleText(1234567.25).view(), L"1234567,250000");
    EXPECT_EQ(_wtof(L"1,5"), 1.5);
    EXPECT_EQ(_wtof(L"1.5"), 1.0);
}

// Its separator is no character of the "C" character type.
TEST_F(OtherSeparator, IsThatOfTheNumbersWhateverTheCharacterType) {
    use(LC_NUMERIC, "ps_AF");
    if (IsSkipped()) return;
    for (char const* const type : {"C", "made"}) {
        ASSERT_NE(std::setlocale(LC_CTYPE, type), nullptr);
        EXPECT_EQ(doubleText(1.5).view(), L"1\u066B500000") << type;
        EXPECT_EQ(_wtof(doubleText(1.5)), 1.5) << type;
    }
}

} // namespace
