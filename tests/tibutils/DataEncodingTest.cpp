#include <TibXml/tibutils/DataEncoding.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace TibUtils::DataEncoding;

std::wstring wide(CString const& text) {
    return std::wstring(text.view());
}

std::wstring character(std::uint32_t code) {
    return std::wstring(1, static_cast<wchar_t>(code));
}

struct Pair {
    std::wstring wide;
    std::string utf8;
};

std::vector<Pair> const pairs = {
    {L"", ""},
    {L"plain ASCII text, longer than one block of bytes", //
     "plain ASCII text, longer than one block of bytes"},
    {std::wstring(1, L'\0'), std::string(1, '\0')},
    {character(0x7F), "\x7F"},
    {character(0x80), "\xC2\x80"},
    {character(0x7FF), "\xDF\xBF"},
    {character(0x800), "\xE0\xA0\x80"},
    {character(0xD7FF), "\xED\x9F\xBF"},
    {character(0xE000), "\xEE\x80\x80"},
    {character(0xFFFD), "\xEF\xBF\xBD"},
    {character(0xFFFF), "\xEF\xBF\xBF"},
    {character(0x10000), "\xF0\x90\x80\x80"},
    {character(0x10FFFF), "\xF4\x8F\xBF\xBF"},
    {L"gr\u00FC\u00DF \u20AC \U0001F600!", "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x98\x80!"},
};

TEST(Utf8Encode, EncodesEveryLengthOfCharacter) {
    for (Pair const& pair : pairs) {
        EXPECT_EQ(Utf8Encode(pair.wide), pair.utf8);
    }
}

TEST(Utf8Decode, DecodesEveryLengthOfCharacter) {
    for (Pair const& pair : pairs) {
        EXPECT_EQ(wide(Utf8Decode(pair.utf8)), pair.wide) << pair.utf8;
    }
}

TEST(Utf8Encode, TakesStringsOfEveryKind) {
    EXPECT_EQ(Utf8Encode(L"a"), "a");
    EXPECT_EQ(Utf8Encode(CString(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(Utf8Encode, ReplacesWhatIsNoCharacter) {
    std::string const replaced = "\xEF\xBF\xBD";
    for (std::uint32_t const code : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(Utf8Encode(L"a" + character(code) + L"\u00E9"), "a" + replaced + "\xC3\xA9")
            << code;
    }
    EXPECT_EQ(Utf8Encode(character(0xD83D) + character(0xDE00)), replaced + replaced);
}

std::vector<Pair> const illFormed = {
    // bytes that begin nothing
    {L"\uFFFD", "\x80"},
    {L"\uFFFD\uFFFD", "\x80\xBF"},
    {L"\uFFFD", "\xFF"},
    {L"\uFFFD\uFFFD", "\xC0\xAF"},
    {L"\uFFFD\uFFFD", "\xC1\xBF"},
    {L"\uFFFD\uFFFD\uFFFD\uFFFD", "\xF5\x80\x80\x80"},
    // overlong forms, surrogates, too great values: not even their second byte fits
    {L"\uFFFD\uFFFD\uFFFD", "\xE0\x80\xAF"},
    {L"\uFFFD\uFFFD\uFFFD\uFFFD", "\xF0\x80\x80\xAF"},
    {L"\uFFFD\uFFFD\uFFFD", "\xED\xA0\x80"},
    {L"\uFFFD\uFFFD\uFFFD\uFFFD", "\xF4\x90\x80\x80"},
    // begun and not finished: one for what has come
    {L"\uFFFD"
     L"a",
     "\xC3"
     "a"},
    {L"\uFFFD"
     L"a",
     "\xE2\x82"
     "a"},
    {L"\uFFFD"
     L"a",
     "\xF0\x9F\x98"
     "a"},
    {L"\uFFFD\u00E9", "\xE2\x82\xC3\xA9"},
    {L"\uFFFD\uFFFD"
     L"a",
     "\xE2\xE2\x82"
     "a"},
    // the same at the end of the text
    {L"a\uFFFD", "a\xC3"},
    {L"a\uFFFD", "a\xE2\x82"},
    {L"a\uFFFD", "a\xF0\x9F\x98"},
    {L"a\uFFFD\uFFFD", "a\xED\xA0"},
    // good text around it stays
    {L"gr\u00FC\uFFFD\u00DF", "gr\xC3\xBC\xFF\xC3\x9F"},
};

TEST(Utf8Decode, ReplacesWhatIsIllFormed) {
    for (Pair const& pair : illFormed) {
        EXPECT_EQ(wide(Utf8Decode(pair.utf8)), pair.wide) << testing::PrintToString(pair.utf8);
    }
}

TEST(Utf8Encode, UndoesDecodingForEveryCharacter) {
    for (std::uint32_t code = 0; code <= 0x10FFFF; ++code) {
        bool const surrogate = code >= 0xD800 && code <= 0xDFFF;
        if (!surrogate) {
            ASSERT_EQ(wide(Utf8Decode(Utf8Encode(character(code)))), character(code)) << code;
        }
    }
}

std::wstring decodedInPieces(std::string_view first, std::string_view second) {
    Utf8Decoder decoder;
    std::wstring text = wide(decoder.Decode(first));
    text += wide(decoder.Decode(second));
    text += wide(decoder.Finish());
    return text;
}

TEST(Utf8Decoder, WhereTheTextIsCutDoesNotMatter) {
    for (auto const* const table : {&pairs, &illFormed}) {
        for (Pair const& pair : *table) {
            for (std::size_t cut = 0; cut <= pair.utf8.size(); ++cut) {
                std::string_view const text = pair.utf8;
                EXPECT_EQ(decodedInPieces(text.substr(0, cut), text.substr(cut)), pair.wide)
                    << testing::PrintToString(pair.utf8) << " at " << cut;
            }
        }
    }
}

TEST(Utf8Decoder, TakesTextByteByByte) {
    for (auto const* const table : {&pairs, &illFormed}) {
        for (Pair const& pair : *table) {
            Utf8Decoder decoder;
            std::wstring text;
            for (char const byte : pair.utf8) {
                text += wide(decoder.Decode(std::string_view(&byte, 1)));
            }
            EXPECT_EQ(text + wide(decoder.Finish()), pair.wide);
        }
    }
}

TEST(Utf8Decoder, ReturnsACharacterWithItsLastByte) {
    Utf8Decoder decoder;
    EXPECT_EQ(wide(decoder.Decode("a\xE2")), L"a");
    EXPECT_TRUE(decoder.HasUnfinished());
    EXPECT_EQ(wide(decoder.Decode("\x82")), L"");
    EXPECT_EQ(wide(decoder.Decode("")), L"");
    EXPECT_TRUE(decoder.HasUnfinished());
    EXPECT_EQ(wide(decoder.Decode("\xAC"
                                  "b")),
              L"\u20ACb");
    EXPECT_FALSE(decoder.HasUnfinished());
    EXPECT_EQ(wide(decoder.Finish()), L"");
}

TEST(Utf8Decoder, ReturnsWhatCannotBeFinishedAtOnce) {
    Utf8Decoder decoder;
    EXPECT_EQ(wide(decoder.Decode("\xED\xA0")), L"\uFFFD\uFFFD");
    EXPECT_FALSE(decoder.HasUnfinished());
}

TEST(Utf8Decoder, IsAsNewWhenFinished) {
    Utf8Decoder decoder;
    EXPECT_EQ(wide(decoder.Decode("\xC3")), L"");
    EXPECT_EQ(wide(decoder.Finish()), L"\uFFFD");
    EXPECT_FALSE(decoder.HasUnfinished());
    EXPECT_EQ(wide(decoder.Decode("\xA9")), L"\uFFFD");
    EXPECT_EQ(wide(decoder.Finish()), L"");
}

} // namespace
