// How each type reads from text: one table for each.
#include "EngineTest.h"

#include <cmath>
#include <limits>

namespace {

template <class T>
struct Row {
    wchar_t const* text;
    std::optional<T> value;
};

constexpr std::nullopt_t absent = std::nullopt;

/// Reads each text from an element and from an attribute.
template <class T, std::size_t Size>
void expectReads(Row<T> const (&rows)[Size]) {
    WXmlNode const node = loaded(L"<a/>").GetRootNode();
    for (Row<T> const& row : rows) {
        node.Value().SetString(row.text);
        node.Attribute(L"@k").SetString(row.text);
        EXPECT_TRUE(node.Value().Get<T>() == row.value) << "\"" << utf8(row.text) << '"';
        EXPECT_TRUE(node.Attribute(L"@k").Get<T>() == row.value) << "@\"" << utf8(row.text) << '"';
    }
}

TEST(Reading, Bool) {
    Row<bool> const rows[] = {
        {L"true", true}, {L"false", false},  {L"TRUE", absent},  {L"True", absent},
        {L"1", absent},  {L"0", absent},     {L" true", absent}, {L"true ", absent},
        {L"", absent},   {L"truex", absent}, {L"yes", absent},
    };
    expectReads(rows);
}

TEST(Reading, Int) {
    Row<int> const rows[] = {
        {L"42", 42},
        {L" 42", 42},
        {L"\t\n 42", 42},
        {L"42 ", absent},
        {L"", absent},
        {L" ", absent},
        {L"+7", 7},
        {L"-7", -7},
        {L"+-7", absent},
        {L"- 7", absent},
        {L"+", absent},
        {L"0", 0},
        {L"-0", 0},
        {L"007", 7},
        {L"0x10", absent},
        {L"1.0", absent},
        {L"1e3", absent},
        {L"7px", absent},
        {L"x7", absent},
        {L"1,000", absent},
        {L"\x0661", absent},
        {L"2147483647", 2147483647},
        {L"2147483648", 2147483647},
        {L"99999999999", 2147483647},
        {L"99999999999999999999999999", 2147483647},
        {L"-2147483648", std::numeric_limits<int>::min()},
        {L"-2147483649", std::numeric_limits<int>::min()},
        {L"99999999999x", absent},
    };
    expectReads(rows);
}

TEST(Reading, Int64) {
    Row<__int64> const rows[] = {
        {L"99999999999", 99999999999},
        {L" -5", -5},
        {L"5 ", absent},
        {L"", absent},
        {L"9223372036854775807", std::numeric_limits<__int64>::max()},
        {L"9223372036854775808", std::numeric_limits<__int64>::max()},
        {L"-9223372036854775808", std::numeric_limits<__int64>::min()},
        {L"-9223372036854775809", std::numeric_limits<__int64>::min()},
        {L"18446744073709551615", std::numeric_limits<__int64>::max()},
        {L"12x", absent},
    };
    expectReads(rows);
}

TEST(Reading, UnsignedIntegersReadAsSignedOnes) {
    constexpr unsigned long long greatest = 9223372036854775807ULL;
    Row<unsigned long long> const rows[] = {
        {L"7", 7ULL},
        {L"18446744073709551615", greatest},
        {L"-1", 18446744073709551615ULL},
        {L"", absent},
        {L"x", absent},
    };
    expectReads(rows);
    WXmlNode const node = loaded(L"<a/>").GetRootNode();
    node.Value().SetUIntPtr(18446744073709551615ULL);
    EXPECT_EQ(node.Value().GetUIntPtr(1), greatest);
}

TEST(Reading, LongIsTheWideInteger) {
    WXmlNode const node = loaded(L"<a>99999999999</a>").GetRootNode();
    EXPECT_EQ(node.Value().Get<long>(), 99999999999L);
    EXPECT_EQ(node.Value().Get<unsigned long>(), 99999999999UL);
}

TEST(Reading, Double) {
    constexpr double infinite = std::numeric_limits<double>::infinity();
    Row<double> const rows[] = {
        {L"1.5", 1.5},   {L"1.5xyz", 1.5}, {L" 1.5", 1.5},  {L"-0.25", -0.25},
        {L"+2", 2.0},    {L"1e3", 1000.0}, {L".5", 0.5},    {L"0", 0.0},
        {L"0.0", 0.0},   {L"0abc", 0.0},   {L"00", 0.0},    {L"0e5", 0.0},
        {L"", absent},   {L"abc", absent}, {L"-0", absent}, {L"+0", absent},
        {L".0", absent}, {L" 0", absent},  {L"-", absent},  {L"1e999", infinite},
        {L"1,5", 1.0},
    };
    expectReads(rows);
}

TEST(Reading, NaNCountsAsANumber) {
    WXmlNode const node = loaded(L"<a>nan</a>").GetRootNode();
    ASSERT_TRUE(node.Value().Get<double>().has_value());
    EXPECT_TRUE(std::isnan(*node.Value().Get<double>()));
}

TEST(Reading, String) {
    Row<CString> const rows[] = {
        {L"", CString{}}, {L" x ", CString{L" x "}}, {L"\x1F600", CString{L"\x1F600"}}};
    expectReads(rows);
}

TEST(Reading, Point) {
    Row<CPoint> const rows[] = {
        {L"(1,2)", CPoint{1, 2}},
        {L"(-1,+2)", CPoint{-1, 2}},
        {L"( 1 , 2)", CPoint{1, 2}},
        {L"(\t1\n,\t2)", CPoint{1, 2}},
        {L"(1,2)xyz", CPoint{1, 2}},
        {L"(99999999999,-99999999999)", CPoint{2147483647, std::numeric_limits<int>::min()}},
        {L"(1,2 )", absent},
        {L" (1,2)", absent},
        {L"1,2", absent},
        {L"(1 2)", absent},
        {L"(1;2)", absent},
        {L"(1,2", absent},
        {L"(1,)", absent},
        {L"(,2)", absent},
        {L"(1)", absent},
        {L"()", absent},
        {L"(", absent},
        {L"", absent},
        {L"(x,2)", absent},
        {L"(1,x)", absent},
        {L"(1,2,3)", absent},
        {L"(1.5,2)", absent},
        {L"5", absent},
    };
    expectReads(rows);
}

TEST(Reading, Size) {
    Row<CSize> const rows[] = {
        {L"(3,4)", CSize{3, 4}},
        {L"(3, 4)", CSize{3, 4}},
        {L"( 3 ,4)", CSize{3, 4}},
        {L"(3,4)px", CSize{3, 4}},
        {L"(3,4 )", absent},
        {L"(3)", absent},
        {L"(", absent},
        {L"5", CSize{5, 5}},
        {L"7 px", CSize{7, 7}},
        {L" 7", CSize{7, 7}},
        {L"7,8", CSize{7, 7}},
        {L"-7", CSize{-7, -7}},
        {L" (3,4)", absent},
        {L"x", absent},
        {L"", absent},
    };
    expectReads(rows);
}

TEST(Reading, Rect) {
    Row<CRect> const rows[] = {
        {L"1,2,3,4", CRect{1, 2, 3, 4}},
        {L" 1 , 2 , 3 , 4 ", CRect{1, 2, 3, 4}},
        {L"-1,+2,3,4", CRect{-1, 2, 3, 4}},
        {L"1,2,3,4,5", CRect{1, 2, 3, 4}},
        {L"1,2,3,4px", CRect{1, 2, 3, 4}},
        {L"9", CRect{9, 9, 9, 9}},
        {L" 9 ", CRect{9, 9, 9, 9}},
        {L"9px", CRect{9, 9, 9, 9}},
        {L"9;1", CRect{9, 9, 9, 9}},
        {L"(1,2,3,4)", absent},
        {L"1,2,3", absent},
        {L"1,2,3,", absent},
        {L"1,2", absent},
        {L"1,", absent},
        {L",1", absent},
        {L"1,2;3,4", absent},
        {L"1,2,3;4", absent},
        {L"1,x,3,4", absent},
        {L"x", absent},
        {L"", absent},
    };
    expectReads(rows);
}

TEST(Reading, WithoutATargetEverythingIsAbsent) {
    WXmlValueAccessor const value = loaded(L"<a/>").GetRootNode().Attribute(L"@k");
    EXPECT_FALSE(value.Get<bool>());
    EXPECT_FALSE(value.Get<int>());
    EXPECT_FALSE(value.Get<long>());
    EXPECT_FALSE(value.Get<__int64>());
    EXPECT_FALSE(value.Get<unsigned long>());
    EXPECT_FALSE(value.Get<unsigned long long>());
    EXPECT_FALSE(value.Get<double>());
    EXPECT_FALSE(value.Get<CString>());
    EXPECT_FALSE(value.Get<CPoint>());
    EXPECT_FALSE(value.Get<CSize>());
    EXPECT_FALSE(value.Get<CRect>());
}

struct Thrower {
    char const* typeName;
    void (*get)(WXmlValueAccessor const&);
};

Thrower const throwers[] = {
    {"bool", [](WXmlValueAccessor const& a) { a.GetBool(); }},
    {"bool", [](WXmlValueAccessor const& a) { a.GetBool_throws(); }},
    {"int", [](WXmlValueAccessor const& a) { a.GetInt(); }},
    {"int", [](WXmlValueAccessor const& a) { a.GetInt_throws(); }},
    {"intptr", [](WXmlValueAccessor const& a) { a.GetIntPtr(); }},
    {"intptr", [](WXmlValueAccessor const& a) { a.GetIntPtr_throws(); }},
    {"double", [](WXmlValueAccessor const& a) { a.GetDouble(); }},
    {"double", [](WXmlValueAccessor const& a) { a.GetDouble_throws(); }},
    {"string", [](WXmlValueAccessor const& a) { a.GetString(); }},
    {"string", [](WXmlValueAccessor const& a) { a.GetString_throws(); }},
    {"size", [](WXmlValueAccessor const& a) { a.GetSize(); }},
    {"size", [](WXmlValueAccessor const& a) { a.GetSize_throws(); }},
    {"point", [](WXmlValueAccessor const& a) { a.GetPoint(); }},
    {"point", [](WXmlValueAccessor const& a) { a.GetPoint_throws(); }},
    {"rect", [](WXmlValueAccessor const& a) { a.GetRect(); }},
    {"rect", [](WXmlValueAccessor const& a) { a.GetRect_throws(); }},
};

TEST(Reading, GettersWithoutDefaultThrowTheTypesName) {
    WXmlNode const node = loaded(L"<a>nothing of the kind</a>").GetRootNode();
    for (Thrower const& row : throwers) {
        EXPECT_EQ(missingTypeOf([&] { row.get(node.Attribute(L"@k")); }), row.typeName);
        // Every text is a string.
        bool const reads = row.typeName == std::string{"string"};
        EXPECT_EQ(missingTypeOf([&] { row.get(node.Value()); }),
                  reads ? "nothing thrown" : row.typeName);
    }
}

TEST(Reading, GettersWithoutDefaultGiveTheValue) {
    WXmlNode const node =
        loaded(L"<a b='true' i='5' l='99999999999' d='1.5' s='x' p='(1,2)' r='1,2,3,4'/>")
            .GetRootNode();
    EXPECT_TRUE(node.Attribute(L"@b").GetBool());
    EXPECT_TRUE(node.Attribute(L"@b").GetBool_throws());
    EXPECT_EQ(node.Attribute(L"@i").GetInt(), 5);
    EXPECT_EQ(node.Attribute(L"@i").GetInt_throws(), 5);
    EXPECT_EQ(node.Attribute(L"@l").GetIntPtr(), 99999999999);
    EXPECT_EQ(node.Attribute(L"@l").GetIntPtr_throws(), 99999999999);
    EXPECT_EQ(node.Attribute(L"@d").GetDouble(), 1.5);
    EXPECT_EQ(node.Attribute(L"@d").GetDouble_throws(), 1.5);
    EXPECT_EQ(utf8(node.Attribute(L"@s").GetString()), "x");
    EXPECT_EQ(utf8(node.Attribute(L"@s").GetString_throws()), "x");
    EXPECT_TRUE(node.Attribute(L"@p").GetPoint() == (CPoint{1, 2}));
    EXPECT_TRUE(node.Attribute(L"@p").GetPoint_throws() == (CPoint{1, 2}));
    EXPECT_TRUE(node.Attribute(L"@p").GetSize() == (CSize{1, 2}));
    EXPECT_TRUE(node.Attribute(L"@p").GetSize_throws() == (CSize{1, 2}));
    EXPECT_TRUE(node.Attribute(L"@r").GetRect() == (CRect{1, 2, 3, 4}));
    EXPECT_TRUE(node.Attribute(L"@r").GetRect_throws() == (CRect{1, 2, 3, 4}));
}

} // namespace
