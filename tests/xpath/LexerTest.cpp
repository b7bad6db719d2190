#include <xpath/xpath_stream.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace TinyXPath;

struct Lexed {
    std::string text;
    int code;

    bool operator==(Lexed const&) const = default;
};

std::ostream& operator<<(std::ostream& out, Lexed const& lexed) {
    return out << '\'' << lexed.text << "' " << lexed.code;
}

using Tokens = std::vector<Lexed>;

Tokens lex(std::string_view utf8) {
    ParseToXPathElements stream(utf8);
    stream.lex();
    Tokens tokens;
    for (token const* read = stream.tokens().first(); read; read = stream.tokens().next()) {
        tokens.push_back({read->text, read->code});
    }
    return tokens;
}

struct Row {
    std::string_view input;
    Tokens tokens;
};

std::vector<Row> const rows = {
    {"", {}},
    // names
    {"a", {{"a", 28}}},
    {"_a", {{"_a", 28}}},
    {"_", {{"_", 28}}},
    {"a-b", {{"a-b", 28}}},
    {"-a", {{"-", 9}, {"a", 28}}},
    {"a.b", {{"a.b", 28}}},
    {"a.", {{"a.", 28}}},
    {"x:y", {{"x:y", 28}}},
    {"a1_-.:", {{"a1_-.:", 28}}},
    {"child::*", {{"child::", 28}, {"*", 18}}},
    {"child::b", {{"child::b", 28}}},
    {"parent::*", {{"parent::", 28}, {"*", 18}}},
    {":a", {{":", 11}, {"a", 28}}},
    {"::a", {{":", 11}, {":", 11}, {"a", 28}}},
    {"1a", {{"1", 29}, {"a", 28}}},
    {"a\xB7z", {{"a\xB7z", 28}}},
    {"\xB7z", {{"\xB7", 5}, {"z", 28}}},
    // spaces are tokens
    {"a b", {{"a", 28}, {" ", 2}, {"b", 28}}},
    {" \t\r\n", {{" ", 2}, {"\t", 2}, {"\r", 2}, {"\n", 2}}},
    // numbers
    {"0", {{"0", 29}}},
    {"123", {{"123", 29}}},
    {"1.5", {{"1.5", 29}}},
    {"1.", {{"1.", 29}}},
    {".5", {{".5", 29}}},
    {"1.2.3", {{"1.2", 29}, {".3", 29}}},
    {".1.2", {{".1", 29}, {".2", 29}}},
    {"1..2", {{"1.", 29}, {".2", 29}}},
    {"1..", {{"1.", 29}, {".", 8}}},
    {"1-2", {{"1", 29}, {"-", 9}, {"2", 29}}},
    // dots
    {".", {{".", 8}}},
    {"..", {{".", 8}, {".", 8}}},
    {"..5", {{".", 8}, {".5", 29}}},
    {"./", {{".", 8}, {"/", 6}}},
    {"../a", {{".", 8}, {".", 8}, {"/", 6}, {"a", 28}}},
    {".a", {{".", 8}, {"a", 28}}},
    // literals
    {"'a'", {{"a", 30}}},
    {"\"a\"", {{"a", 30}}},
    {"''", {{"", 30}}},
    {"\"\"", {{"", 30}}},
    {"'a\"b'", {{"a\"b", 30}}},
    {"\"a'b\"", {{"a'b", 30}}},
    {"'a[/]b'", {{"a[/]b", 30}}},
    {"'a''b'", {{"a", 30}, {"b", 30}}},
    {"'\xC3\xA9'", {{"\xC3\xA9", 30}}},
    {"'abc", {}},
    {"\"abc", {}},
    {"'", {}},
    {"a'bc", {{"a", 28}}},
    {"a'b'\"c", {{"a", 28}, {"b", 30}}},
    {"@x='1'", {{"@", 7}, {"x", 28}, {"=", 23}, {"1", 30}}},
    // operators come byte by byte
    {"//", {{"/", 6}, {"/", 6}}},
    {"!=", {{"!", 27}, {"=", 23}}},
    {"<=", {{"<", 21}, {"=", 23}}},
    {">=", {{">", 22}, {"=", 23}}},
    // keywords
    {"text()", {{"text", 57}, {"(", 16}, {")", 17}}},
    {"text ()", {{"text", 28}, {" ", 2}, {"(", 16}, {")", 17}}},
    {"text", {{"text", 28}}},
    {"node()", {{"node", 56}, {"(", 16}, {")", 17}}},
    {"node", {{"node", 56}}},
    {"a or b", {{"a", 28}, {" ", 2}, {"or", 37}, {" ", 2}, {"b", 28}}},
    {"Or", {{"Or", 28}}},
    {"processing-instruction()", {{"processing-instruction", 54}, {"(", 16}, {")", 17}}},
    // characters of several bytes are cut where a piece is no letter
    {"\xC3\xA9", {{"\xC3", 28}, {"\xA9", 1}}},
    {"\xC3\xB7", {{"\xC3\xB7", 28}}},
    {"\xD7\x90", {{"\xD7", 1}, {"\x90", 1}}},
    {"\xE2\x82\xAC", {{"\xE2", 28}, {"\x82", 1}, {"\xAC", 1}}},
    {"caf\xC3\xA9s", {{"caf\xC3", 28}, {"\xA9", 1}, {"s", 28}}},
};

TEST(Lexer, CutsPathsIntoTokens) {
    for (Row const& row : rows) {
        EXPECT_EQ(lex(row.input), row.tokens) << row.input;
    }
}

// A byte which begins no longer token is a token by itself, with its class for its code.
TEST(Lexer, EveryOtherByteIsAToken) {
    for (int value = 1; value < 256; ++value) {
        lexical_code const code = byteClass(static_cast<unsigned char>(value));
        std::string const input(1, static_cast<char>(value));
        bool const quote = code == code_double_quote || code == code_simple_quote;
        bool const name = code == code_base_char || code == code_under;
        int const expected = name ? 28 : code == code_digit ? 29 : static_cast<int>(code);
        EXPECT_EQ(lex(input), quote ? Tokens{} : (Tokens{{input, expected}})) << value;
    }
}

TEST(Lexer, NamesEndAtEveryByteWhichDoesNotContinueThem) {
    for (int value = 1; value < 256; ++value) {
        lexical_code const code = byteClass(static_cast<unsigned char>(value));
        bool const goesOn = code == code_digit || code == code_base_char || code == code_extender ||
                            code == code_dot || code == code_minus || code == code_under ||
                            code == code_colon;
        std::string const input = std::string("a") + static_cast<char>(value) + "b";
        Tokens const tokens = lex(input);
        ASSERT_FALSE(tokens.empty());
        EXPECT_EQ(tokens.front().text, goesOn ? input : "a") << value;
    }
}

TEST(Lexer, EveryKeywordIsRecognisedInPlace) {
    for (int code = 37; code <= 57; ++code) {
        std::string const input = std::string(displayName(code)) + "(";
        EXPECT_EQ(lex(input), (Tokens{{std::string(displayName(code)), code}, {"(", 16}}));
    }
}

TEST(Lexer, AZeroByteEndsTheInput) {
    EXPECT_EQ(lex(std::string_view("a\0b", 3)), (Tokens{{"a", 28}}));
    EXPECT_EQ(lex(std::string_view("/\0b", 3)), (Tokens{{"/", 6}}));
    EXPECT_EQ(lex(std::string_view("1\0b", 3)), (Tokens{{"1", 29}}));
    EXPECT_EQ(lex(std::string_view("'a\0b'", 5)), (Tokens{}));
    EXPECT_EQ(lex(std::string_view("\0b", 2)), (Tokens{}));
}

TEST(Lexer, NothingButQuotesIsLost) {
    std::string joined;
    std::string_view const path = "/a//b[@x=1]/c d.e(f)|..//*[text()!=2.5]";
    for (Lexed const& lexed : lex(path)) {
        joined += lexed.text;
    }
    EXPECT_EQ(joined, path);
}

} // namespace
