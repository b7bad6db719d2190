#include <TibXml/tibutils/DataEncoding.h>
#include <TibXml/tibutils/Json.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

using TibUtils::Variant;
using namespace TibUtils::Json;
using TibUtils::DataEncoding::Utf8Encode;

TEST(JsonWrite, WritesEveryKind) {
    struct Row {
        Variant value;
        std::string text;
    };

    Row const rows[] = {
        {{}, "null"},
        {true, "true"},
        {false, "false"},
        {L"", "\"\""},
        {L"text", "\"text\""},
        {L"\u00fc\u20ac\U0001f600", "\"\u00fc\u20ac\U0001f600\""},
        {L"a\"b\\c/d'", R"("a\"b\\c/d'")"},
        {L"\b\t\n\f\r", R"("\b\t\n\f\r")"},
        {L"\x01\x1f\x7f", "\"\\u0001\\u001f\x7f\""},
        {CString(L"a\0b", 3), R"("a\u0000b")"},
        {CString(wchar_t(0xD800), 1), "\"\ufffd\""},
        {Object{}, "{}"},
        {Array{}, "[]"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(Write(row.value), row.text);
}

TEST(JsonWrite, WritesTheShortestNumbers) {
    struct Row {
        double number;
        char const* text;
    };

    Row const rows[] = {
        {0, "0"},
        {-0.0, "-0"},
        {7, "7"},
        {-7, "-7"},
        {100000, "100000"},
        {9007199254740992.0, "9007199254740992"},
        {-9007199254740992.0, "-9007199254740992"},
        {1e21, "1e+21"},
        {0.1, "0.1"},
        {-1.5, "-1.5"},
        {1e-7, "1e-07"},
        {1.0 / 3, "0.3333333333333333"},
        {std::numeric_limits<double>::max(), "1.7976931348623157e+308"},
        {std::numeric_limits<double>::denorm_min(), "5e-324"},
        {std::numeric_limits<double>::infinity(), "null"},
        {-std::numeric_limits<double>::infinity(), "null"},
        {std::nan(""), "null"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(Write(row.number), row.text);
}

TEST(JsonWrite, LaysOut) {
    Variant const value = Parse(R"({"a":1,"b":[],"c":{},"d":[1,{"e":[true]}]})");
    EXPECT_EQ(Write(value), R"({"a":1,"b":[],"c":{},"d":[1,{"e":[true]}]})");
    EXPECT_EQ(Write(value, -2), Write(value));
    EXPECT_EQ(Write(value, 2), R"({
  "a": 1,
  "b": [],
  "c": {},
  "d": [
    1,
    {
      "e": [
        true
      ]
    }
  ]
})");
    EXPECT_EQ(Write(Parse("[1]"), 1), "[\n 1\n]");
    EXPECT_EQ(Write(Parse("1"), 4), "1");
}

TEST(ValueToString, QuotesAndEscapesStringsForXml) {
    struct Row {
        Variant value;
        std::string text;
    };

    Row const rows[] = {
        {L"7", "\"7\""},
        {L"", "\"\""},
        {L"a & b", "\"a &amp; b\""},
        {L"&amp;", "\"&amp;amp;\""},
        {L"&#38;", "\"&amp;#38;\""},
        {L"<\"'>", "\"&lt;&quot;'&gt;\""},
        {L"\t\n\r x", "\"&#9;&#10;&#13; x\""},
        {L"\u00fc\U0001f600", "\"\u00fc\U0001f600\""},
        {L"\x01\x1f", "\"\ufffd\ufffd\""},
        {CString(L"a\0b", 3), "\"a\ufffdb\""},
        {CString(wchar_t(0xFFFE), 1), "\"\ufffd\""},
        {CString(wchar_t(0xDC00), 1), "\"\ufffd\""},
        {L"\\", "\"\\\""},
        {1.5, "1.5"},
        {true, "true"},
        {{}, "null"},
        {Parse(R"({"a":["<"]})"), R"({"a":["<"]})"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(Utf8Encode(ValueToString(row.value, 0)), row.text);
}

TEST(ValueToString, TheOptionIsTheIndentation) {
    EXPECT_EQ(Utf8Encode(ValueToString(Parse("[1]"), 2)), "[\n  1\n]");
    EXPECT_EQ(Utf8Encode(ValueToString(L"<", 2)), "\"&lt;\"");
}

} // namespace
