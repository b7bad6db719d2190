#include <TibXml/platform/Utf.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace tibxml::platform;

struct TextCase {
    char const* name;
    std::string utf8;
    std::wstring wide;
};

/// Each text at every distance from the boundary of a block, alone and between ASCII runs.
std::vector<TextCase> textCases() {
    std::vector<TextCase> cases{{"empty", "", L""},
                                {"ascii", "abc", L"abc"},
                                {"nul", std::string{"a\0b", 3}, std::wstring{L"a\0b", 3}},
                                {"last of one byte", "\x7F", L"\x7F"},
                                {"first of two bytes", "\xC2\x80", L"\u0080"},
                                {"last of two bytes", "\xDF\xBF", L"\u07FF"},
                                {"first of three bytes", "\xE0\xA0\x80", L"\u0800"},
                                {"before surrogates", "\xED\x9F\xBF", L"\uD7FF"},
                                {"after surrogates", "\xEE\x80\x80", L"\uE000"},
                                {"last of three bytes", "\xEF\xBF\xBF", L"\uFFFF"},
                                {"first of four bytes", "\xF0\x90\x80\x80", L"\U00010000"},
                                {"last of all", "\xF4\x8F\xBF\xBF", L"\U0010FFFF"},
                                {"mixed", "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80z", L"aä€😀z"}};
    auto const single = cases;
    for (std::size_t pad = 1; pad < 40; ++pad) {
        for (auto const& [name, utf8, wide] : single) {
            cases.push_back({name, std::string(pad, 'x') + utf8 + std::string(40 - pad, 'y'),
                             std::wstring(pad, L'x') + wide + std::wstring(40 - pad, L'y')});
        }
    }
    return cases;
}

TEST(Utf, ConvertsBothWays) {
    for (auto const& [name, utf8, wide] : textCases()) {
        std::wstring widened = L"<";
        std::string narrowed = "<";
        EXPECT_TRUE(appendWide(widened, utf8)) << name;
        EXPECT_TRUE(appendUtf8(narrowed, wide)) << name;
        EXPECT_EQ(widened, L"<" + wide) << name;
        EXPECT_EQ(narrowed, "<" + utf8) << name;
        EXPECT_EQ(wideLength(utf8), wide.size()) << name;
        EXPECT_EQ(utf8Size(wide).bytes, utf8.size()) << name;
    }
}

TEST(Utf, ConvertsEveryCharacter) {
    for (char32_t code = 0; code <= 0x10FFFF; ++code) {
        auto const wide = static_cast<wchar_t>(code);
        auto const surrogate = code >= 0xD800 && code <= 0xDFFF;
        std::string utf8;
        ASSERT_EQ(appendUtf8(utf8, {&wide, 1}), !surrogate) << std::hex << std::uint32_t(code);
        if (surrogate) continue;
        auto const first = firstUtf8Character(utf8);
        ASSERT_EQ(first.code, code);
        ASSERT_EQ(first.length, utf8.size());
    }
}

TEST(Utf, MakesStringsForTheEngine) {
    for (auto const& [name, utf8, wide] : textCases()) {
        auto* const text = bstrFromUtf8(utf8);
        ASSERT_NE(text, nullptr);
        EXPECT_EQ((std::wstring_view{text, SysStringLen(text)}), wide) << name;
        SysFreeString(text);
    }
}

struct BadCase {
    char const* name;
    std::string utf8;
};

std::vector<BadCase> badCases() {
    return {{"stray continuation", "\x80"},
            {"last stray continuation", "\xBF"},
            {"overlong of two", "\xC0\x80"},
            {"overlong of two, last", "\xC1\xBF"},
            {"overlong of three", "\xE0\x9F\xBF"},
            {"overlong of four", "\xF0\x8F\xBF\xBF"},
            {"first surrogate", "\xED\xA0\x80"},
            {"last surrogate", "\xED\xBF\xBF"},
            {"above the last", "\xF4\x90\x80\x80"},
            {"lead F5", "\xF5\x80\x80\x80"},
            {"lead FE", "\xFE\x80\x80\x80"},
            {"lead FF", "\xFF"},
            {"two cut short", "\xC3"},
            {"three cut short", "\xE2\x82"},
            {"four cut short", "\xF0\x9F\x98"},
            {"two broken", "\xC3("},
            {"three broken second", "\xE2(\xAC"},
            {"three broken third", "\xE2\x82("},
            {"four broken fourth", "\xF0\x9F\x98("}};
}

TEST(Utf, FindsWhereUtf8IsIllFormed) {
    for (auto const& [name, bad] : badCases()) {
        for (std::size_t pad = 0; pad < 20; ++pad) {
            for (auto const* const before : {"a", "\xC3\xA4"}) {
                std::string good;
                for (std::size_t i = 0; i < pad; ++i)
                    good += before;
                std::wstring target = L"kept";
                EXPECT_EQ(validUtf8Prefix(good + bad + "z"), good.size()) << name;
                EXPECT_FALSE(appendWide(target, good + bad)) << name;
                EXPECT_EQ(target, L"kept");
            }
        }
    }
}

TEST(Utf, TakesNoCharacterFromIllFormedText) {
    EXPECT_EQ(firstUtf8Character("").length, 0u);
    for (auto const& [name, bad] : badCases())
        EXPECT_EQ(firstUtf8Character(bad).length, 0u) << name;
}

TEST(Utf, TakesCharactersOneByOne) {
    std::string_view text = "a\xC3\xA4\xF0\x9F\x98\x80";
    std::u32string codes;
    while (!text.empty()) {
        auto const [code, length] = firstUtf8Character(text);
        ASSERT_GT(length, 0u);
        codes += code;
        text.remove_prefix(length);
    }
    EXPECT_EQ(codes, U"aä😀");
}

TEST(Utf, FindsWideTextThatIsNoText) {
    for (auto const bad : {wchar_t(0xD800), wchar_t(0xDBFF), wchar_t(0xDC00), wchar_t(0xDFFF),
                           wchar_t(0x110000), wchar_t(0x7FFFFFFF), wchar_t(-1)}) {
        for (std::size_t pad = 0; pad < 20; ++pad) {
            auto const text = std::wstring(pad, L'a') + bad + std::wstring(20 - pad, L'b');
            std::string target = "kept";
            EXPECT_FALSE(isValidWide(text));
            EXPECT_FALSE(appendUtf8(target, text));
            EXPECT_EQ(target, "kept");
        }
    }
    EXPECT_TRUE(isValidWide(L""));
    EXPECT_TRUE(isValidWide(L"a\uD7FF\uE000\U0010FFFF"));
}

TEST(Utf, TrustedConversionStaysInItsBounds) {
    // Not promised to make sense, but it must not write beyond what wideLength said.
    for (auto const& [name, bad] : badCases()) {
        auto text = "ab" + bad;
        text.append(bad).append("cd");
        std::wstring out(wideLength(text), L'?');
        auto* const end = widenUtf8(text, out.data());
        EXPECT_LE(end, out.data() + out.size()) << name;
    }
}

TEST(Utf, WidensTextsOfAllLengths) {
    for (std::size_t length = 0; length != 70; ++length) {
        std::string const ascii =
            std::string("0123456789abcdefghijklmnopqrstuvwxyz").append(40, 'x');
        for (std::size_t place = 0; place <= length; ++place) {
            std::wstring expected(ascii.begin(), ascii.begin() + static_cast<long>(length));
            std::string utf8 = ascii.substr(0, length);
            if (place != length) {
                utf8.replace(place, 1, "\u20AC");
                expected[place] = L'\u20AC';
            }
            std::wstring out(expected.size() + 2, L'?');
            auto* const begin = out.data() + 1;
            ASSERT_EQ(widenUtf8(utf8, begin), begin + expected.size());
            EXPECT_EQ(out, L'?' + expected + L'?') << utf8;
        }
    }
}

TEST(Utf, WidensNothingBeforeTheStartOfIllFormedText) {
    for (std::size_t before = 0; before != 20; ++before) {
        for (std::size_t after = 0; after != 40; ++after) {
            auto const bad = std::string(before, 'a') + '\xF0' + std::string(after, 'b');
            std::wstring out(1 + wideLength(bad), L'?');
            auto* const end = widenUtf8(bad, out.data() + 1);
            EXPECT_LE(end, out.data() + out.size());
            EXPECT_EQ(out.front(), L'?');
        }
    }
}

TEST(Utf, CountsLeadingAscii) {
    for (std::size_t length = 0; length < 50; ++length) {
        std::string const ascii(length, 'a');
        EXPECT_EQ(asciiPrefix(ascii), length);
        EXPECT_EQ(asciiPrefix(ascii + "\xC3\xA4" + std::string(20, 'b')), length);
    }
}

TEST(Utf, WritesOneCharacter) {
    char out[4];
    EXPECT_EQ(writeUtf8(U'a', out) - out, 1);
    EXPECT_EQ(writeUtf8(U'ä', out) - out, 2);
    EXPECT_EQ(writeUtf8(U'€', out) - out, 3);
    EXPECT_EQ((std::string_view{out, 3}), "\xE2\x82\xAC");
    EXPECT_EQ(writeUtf8(U'😀', out) - out, 4);
}

} // namespace
