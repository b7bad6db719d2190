#include <xpath/lexical_code.h>

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using namespace TinyXPath;

// The bytes of every class but "none", written as the text they are.
std::map<int, std::string> const bytesOfClasses = {
    {0, std::string(1, '\0')},
    {2, "\x09\x0A\x0D\x20"},
    {3, "0123456789"},
    {4, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"
        "\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xC7\xC8\xC9\xCA\xCB\xCC\xCD\xCE\xCF"
        "\xD0\xD1\xD2\xD3\xD4\xD5\xD6\xD8\xD9\xDA\xDB\xDC\xDD\xDE\xDF"
        "\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xE7\xE8\xE9\xEA\xEB\xEC\xED\xEE\xEF"
        "\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF8\xF9\xFA\xFB\xFC\xFD\xFE\xFF"},
    {5, "\xB7"},
    {6, "/"},
    {7, "@"},
    {8, "."},
    {9, "-"},
    {10, "_"},
    {11, ":"},
    {12, ";"},
    {13, "\""},
    {14, "'"},
    {15, "$"},
    {16, "("},
    {17, ")"},
    {18, "*"},
    {19, "+"},
    {20, ","},
    {21, "<"},
    {22, ">"},
    {23, "="},
    {24, "["},
    {25, "]"},
    {26, "|"},
    {27, "!"},
};

struct ByteRange {
    int first;
    int last;
};

// The bytes of class 1, written as ranges: a second, independent reading of the same table.
std::vector<ByteRange> const noneRanges = {
    {0x01, 0x08}, {0x0B, 0x0C}, {0x0E, 0x1F}, {0x23, 0x23}, {0x25, 0x26},
    {0x3F, 0x3F}, {0x5C, 0x5C}, {0x5E, 0x5E}, {0x60, 0x60}, {0x7B, 0x7B},
    {0x7D, 0xB6}, {0xB8, 0xBF}, {0xD7, 0xD7}, {0xF7, 0xF7},
};

int expectedClass(int byte) {
    for (auto const& [code, bytes] : bytesOfClasses) {
        if (bytes.find(static_cast<char>(byte)) != std::string::npos) {
            return code;
        }
    }
    return 1;
}

bool isNone(int byte) {
    for (ByteRange const& range : noneRanges) {
        if (byte >= range.first && byte <= range.last) {
            return true;
        }
    }
    return false;
}

TEST(ByteClass, EveryByteHasItsClass) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(byteClass(static_cast<unsigned char>(byte)), expectedClass(byte)) << byte;
    }
}

TEST(ByteClass, NoneIsWhatNoOtherClassHas) {
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ(byteClass(static_cast<unsigned char>(byte)) == code_none, isNone(byte)) << byte;
    }
}

std::vector<std::string> const expectedNames = {
    "null",
    "<small>none</small>",
    "space",
    "digit",
    "base char",
    "extender",
    "slash",
    "at",
    "dot",
    "minus",
    "under",
    "colon",
    "semi colon",
    "double quote",
    "simple quote",
    "dollar",
    "opening parenthesis",
    "closing parenthesis",
    "star",
    "plus",
    "comma",
    "less than",
    "greater than",
    "equal",
    "opening bracket",
    "closing bracket",
    "or character (|)",
    "exclamation (!)",
    "NCName",
    "Number",
    "literal",
    "::",
    "//",
    "..",
    "!=",
    "<=",
    ">=",
    "or",
    "and",
    "mod",
    "div",
    "ancestor",
    "ancestor-or-self",
    "attribute",
    "child",
    "descendant",
    "descendant-or-self",
    "following",
    "following-sibling",
    "namespace",
    "parent",
    "preceding",
    "preceding-sibling",
    "self",
    "processing-instruction",
    "comment",
    "node",
    "text",
};

TEST(DisplayName, EveryCodeHasItsName) {
    ASSERT_EQ(expectedNames.size(), 58U);
    for (std::size_t code = 0; code < expectedNames.size(); ++code) {
        EXPECT_EQ(displayName(static_cast<int>(code)), expectedNames[code]) << code;
    }
}

TEST(DisplayName, NumbersWhichAreNoCodeHaveNone) {
    EXPECT_EQ(displayName(-1), "");
    EXPECT_EQ(displayName(58), "");
}

int lookUp(std::string const& name, lexical_code following = code_null) {
    return keywordCode(name.data(), name.size(), following);
}

TEST(KeywordCode, EveryKeywordIsFoundBeforeAnyByte) {
    for (int code = 37; code <= 56; ++code) {
        for (int following = 0; following <= 27; ++following) {
            EXPECT_EQ(lookUp(expectedNames[static_cast<std::size_t>(code)],
                             static_cast<lexical_code>(following)),
                      code);
        }
    }
}

TEST(KeywordCode, TextIsAKeywordOnlyBeforeAnOpeningParenthesis) {
    for (int following = 0; following <= 27; ++following) {
        EXPECT_EQ(lookUp("text", static_cast<lexical_code>(following)), following == 16 ? 57 : 28);
    }
}

TEST(KeywordCode, OtherNamesAreNames) {
    for (char const* name : {"", "Or", "AND", "no", "nodes", "node::", "parent::", "ancestor-or",
                             "texts", "::", "..", "NCName"}) {
        EXPECT_EQ(lookUp(name, code_opening_parenthesis), 28) << name;
    }
}

TEST(KeywordCode, LooksAtTheGivenBytesOnly) {
    EXPECT_EQ(keywordCode("order", 2, code_none), 37);
    EXPECT_EQ(keywordCode("order", 5, code_none), 28);
}

} // namespace
