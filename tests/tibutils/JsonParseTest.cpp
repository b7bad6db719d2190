#include <TibXml/tibutils/DataEncoding.h>
#include <TibXml/tibutils/Json.h>

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <random>
#include <string>

namespace {

using TibUtils::Variant;
using namespace TibUtils::Json;
using TibUtils::DataEncoding::Utf8Encode;

std::string repeated(std::string_view text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

TEST(JsonParse, ReadsEveryKind) {
    struct Row {
        std::string text;
        std::string written;
    };

    Row const rows[] = {
        {"null", "null"},
        {"true", "true"},
        {" \t\r\nfalse \n", "false"},
        {"0", "0"},
        {"-0", "0"},
        {"-0.0", "-0"},
        {"12", "12"},
        {"-12.5e1", "-125"},
        {"1E+2", "100"},
        {"1e-2", "0.01"},
        {"9007199254740993", "9007199254740992"}, // rounded
        {"18446744073709551615", "18446744073709551616"},
        {"-9223372036854775808", "-9223372036854775808"},
        {"123456789012345678901234567890", "1.2345678901234568e+29"},
        {"1e-400", "0"},
        {"\"\"", "\"\""},
        {R"("\"\\\/\b\f\n\r\t")", R"("\"\\/\b\f\n\r\t")"},
        {R"("\u00fc\u20AC")", "\"\u00fc\u20ac\""},
        {R"("\ud83d\ude00")", "\"\U0001f600\""},
        {"\"\u00fc\U0001f600\"", "\"\u00fc\U0001f600\""},
        {R"("a\u0000b")", R"("a\u0000b")"},
        {"[]", "[]"},
        {"{ }", "{}"},
        {"[1, [2, []], {\"a\": {}}]", R"([1,[2,[]],{"a":{}}])"},
        {R"({"z":1,"a":2,"":3})", R"({"z":1,"a":2,"":3})"},
        {R"({"a":1,"b":2,"a":3})", R"({"a":3,"b":2})"},
        {"\xef\xbb\xbf[1]", "[1]"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(Write(Parse(row.text)), row.written) << row.text;
}

struct Fault {
    std::string text;
    std::size_t offset;
    std::size_t line;
    std::size_t column;
    std::string reason;
};

std::string const endOfValue = "unexpected end of input; expected '[', '{', or a literal";

Fault const faults[] = {
    {"", 0, 1, 1, endOfValue},
    {" \n ", 3, 2, 2, endOfValue},
    {"[", 1, 1, 2, endOfValue},
    {"[1,", 3, 1, 4, endOfValue},
    {"[1,]", 3, 1, 4, "unexpected ']'; expected '[', '{', or a literal"},
    {"[1}", 2, 1, 3, "unexpected '}'; expected ']'"},
    {"[1 x]", 3, 1, 4, "invalid literal; expected ']'"},
    {"]", 0, 1, 1, "unexpected ']'; expected '[', '{', or a literal"},
    {"[1]]", 3, 1, 4, "unexpected ']'; expected end of input"},
    {"[1] x", 4, 1, 5, "invalid literal; expected end of input"},
    {"{", 1, 1, 2, "unexpected end of input; expected string literal"},
    {"{\"a\"", 4, 1, 5, "unexpected end of input; expected ':'"},
    {"{\"a\":", 5, 1, 6, endOfValue},
    {"{\"a\":1,}", 7, 1, 8, "unexpected '}'; expected string literal"},
    {"{1:2}", 1, 1, 2, "unexpected number literal; expected string literal"},
    {"{\"a\" 1}", 5, 1, 6, "unexpected number literal; expected ':'"},
    {"{\n \"\u00fc\": x}", 9, 2, 7, "invalid literal"},
    {"nul", 3, 1, 4, "invalid literal"},
    {"tru e", 3, 1, 4, "invalid literal"},
    {"True", 0, 1, 1, "invalid literal"},
    {"NaN", 0, 1, 1, "invalid literal"},
    {"'a'", 0, 1, 1, "invalid literal"},
    {"/**/1", 0, 1, 1, "invalid literal"},
    {"+1", 0, 1, 1, "invalid literal"},
    {"01", 1, 1, 2, "unexpected number literal; expected end of input"},
    {"-", 1, 1, 2, "invalid number; expected digit after '-'"},
    {"1.", 2, 1, 3, "invalid number; expected digit after '.'"},
    {"1e999", 4, 1, 5, "number overflow parsing '1e999'"},
    {"\"abc", 4, 1, 5, "invalid string: missing closing quote"},
    {"\"a\x01\"", 2, 1, 3,
     "invalid string: control character U+0001 (SOH) must be escaped to \\u0001"},
    {"\"a\nb\"", 2, 1, 3,
     "invalid string: control character U+000A (LF) must be escaped to \\u000A or \\n"},
    {"\"\xff\"", 1, 1, 2, "invalid string: ill-formed UTF-8 byte"},
    {"\"\xed\xa0\x80\"", 2, 1, 3, "invalid string: ill-formed UTF-8 byte"},
    {"\"\xc3\"", 2, 1, 3, "invalid string: ill-formed UTF-8 byte"},
    {"\"\\x\"", 2, 1, 3, "invalid string: forbidden character after backslash"},
    {"\"\\u12g4\"", 5, 1, 6, "invalid string: '\\u' must be followed by 4 hex digits"},
    {"\"\\ud800\"", 7, 1, 8,
     "invalid string: surrogate U+D800..U+DBFF must be followed by U+DC00..U+DFFF"},
    {"\"\\ud800\\u0041\"", 12, 1, 13,
     "invalid string: surrogate U+D800..U+DBFF must be followed by U+DC00..U+DFFF"},
    {"\"\\udc00\"", 6, 1, 7, "invalid string: surrogate U+DC00..U+DFFF must follow U+D800..U+DBFF"},
    {"\xef\xbb", 2, 1, 2, "invalid BOM; must be 0xEF 0xBB 0xBF if given"},
    {std::string{"[\0]", 3}, 1, 1, 2, "NUL character"},
    {std::string{"1\0", 2}, 1, 1, 2, "NUL character"},
    {std::string{"1\n\0x", 4}, 2, 2, 1, "NUL character"},
    {std::string{"\"\0\"", 3}, 1, 1, 2, "NUL character"},
};

class JsonFault : public testing::TestWithParam<Fault> {};

TEST_P(JsonFault, IsFoundAtItsPlace) {
    Fault const& fault = GetParam();
    try {
        Parse(fault.text);
        FAIL() << "read " << fault.text;
    } catch (ParseError const& error) {
        EXPECT_EQ(error.GetReason(), fault.reason) << fault.text;
        EXPECT_EQ(error.GetOffset(), fault.offset) << fault.text;
        EXPECT_EQ(error.GetLine(), fault.line) << fault.text;
        EXPECT_EQ(error.GetColumn(), fault.column) << fault.text;
        EXPECT_EQ(std::string{error.what()}, "line " + std::to_string(fault.line) + ", column " +
                                                 std::to_string(fault.column) + ": " +
                                                 fault.reason);
    }
}

INSTANTIATE_TEST_SUITE_P(Table, JsonFault, testing::ValuesIn(faults));

TEST(JsonParse, AFaultIsOfTheStandardKind) {
    EXPECT_THROW(Parse("["), std::runtime_error);
    try {
        Parse("[");
    } catch (ParseError const& error) {
        ParseError const copy = error;
        EXPECT_STREQ(copy.GetReason(), error.GetReason());
    }
}

TEST(JsonParse, DepthIsLimited) {
    EXPECT_EQ(Write(Parse(repeated("[", MaxDepth) + repeated("]", MaxDepth))).size(), 2 * MaxDepth);
    for (std::size_t const depth : {MaxDepth + 1, std::size_t{100'000}}) {
        for (std::string_view const opening : {"[", "{\"k\":"}) {
            try {
                Parse(repeated(opening, depth));
                FAIL() << "read a depth of " << depth;
            } catch (ParseError const& error) {
                EXPECT_EQ(error.GetOffset(), MaxDepth * opening.size());
                EXPECT_STREQ(error.GetReason(), "objects and arrays deeper than 1024");
            }
        }
    }
}

TEST(JsonParse, EveryCutTextIsAFault) {
    std::string const text = R"({"a":[1.5,true,null,"\u00fc\ud83d\ude00"],"b":{"c":-1}})";
    EXPECT_NO_THROW(Parse(text));
    for (std::size_t length = 0; length < text.size(); ++length)
        EXPECT_THROW(Parse(std::string_view{text}.substr(0, length)), ParseError) << length;
}

TEST(JsonParse, TakesNoMoreThanItsText) {
    EXPECT_EQ(Write(Parse(std::string_view{"[1]x"}.substr(0, 3))), "[1]");
    EXPECT_EQ(Parse(std::string_view{"12345"}.substr(0, 2)).Get<double>(), 12);
}

// The same with all numbers as `double`s, so that 7 and 7.0 are equal.
nlohmann::ordered_json withDoubles(nlohmann::ordered_json value) {
    if (value.is_number()) return value.get<double>();
    if (value.is_structured()) {
        for (auto& member : value)
            member = withDoubles(member);
    }
    return value;
}

// Another writer and reader of JSON text, which keeps order too, as the judge.
class Generator {
public:
    explicit Generator(std::uint32_t seed) : random_{seed} {}

    nlohmann::ordered_json value(int depth) {
        switch (random_() % (depth > 4 ? 5U : 7U)) {
        case 0: return nullptr;
        case 1: return random_() % 2 == 0;
        case 2: return static_cast<double>(static_cast<int>(random_())) / 64;
        case 3: return static_cast<double>(random_() % 1000);
        case 4: return string();
        case 5: return array(depth);
        default: return object(depth);
        }
    }

private:
    std::string string() {
        constexpr char const* parts[] = {"x",      "\"",         "\\",   "\n",
                                         "\u00fc", "\U0001f600", "\x01", " "};
        std::string text;
        for (std::size_t i = random_() % 8; i > 0; --i)
            text += parts[random_() % 8];
        return text;
    }

    nlohmann::ordered_json array(int depth) {
        auto array = nlohmann::ordered_json::array();
        for (std::size_t i = random_() % 6; i > 0; --i)
            array.push_back(value(depth + 1));
        return array;
    }

    nlohmann::ordered_json object(int depth) {
        auto object = nlohmann::ordered_json::object();
        for (std::size_t i = random_() % 24; i > 0; --i)
            object[string() + std::to_string(random_() % 8)] = value(depth + 2);
        return object;
    }

    std::mt19937 random_;
};

TEST(JsonParse, AgreesWithAnotherReaderAndWriter) {
    for (std::uint32_t seed = 0; seed < 300; ++seed) {
        auto const expected = Generator{seed}.value(0);
        Variant const read = Parse(expected.dump(seed % 2 == 0 ? -1 : 3));
        std::string const written = Write(read, static_cast<int>(seed % 3));
        ASSERT_EQ(withDoubles(nlohmann::ordered_json::parse(written)).dump(), expected.dump())
            << "seed " << seed;
        ASSERT_EQ(Write(Parse(written)), Write(read)) << "seed " << seed;
    }
}

} // namespace
