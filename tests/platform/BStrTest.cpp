#include <TibXml/platform/BStr.h>

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <string_view>
#include <thread>

namespace {

TEST(BStr, CopiesUpToTheNul) {
    auto* const text = SysAllocString(L"abc");
    EXPECT_STREQ(text, L"abc");
    EXPECT_EQ(SysStringLen(text), 3u);
    EXPECT_EQ(SysStringByteLen(text), 3 * sizeof(wchar_t));
    SysFreeString(text);
}

TEST(BStr, CountsItsBytesInFrontOfTheCharacters) {
    auto* const text = SysAllocStringLen(L"abcdef", 4);
    UINT bytes = 0;
    std::memcpy(&bytes, reinterpret_cast<char const*>(text) - 4, 4);
    EXPECT_EQ(bytes, 4 * sizeof(wchar_t));
    EXPECT_EQ(text[4], L'\0');
    SysFreeString(text);
}

TEST(BStr, HoldsNuls) {
    auto* const text = SysAllocStringLen(L"a\0b", 3);
    EXPECT_EQ(SysStringLen(text), 3u);
    EXPECT_EQ((std::wstring_view{text, 3}), (std::wstring_view{L"a\0b", 3}));
    SysFreeString(text);
}

TEST(BStr, NullIsAnEmptyString) {
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    EXPECT_EQ(SysStringByteLen(nullptr), 0u);
    SysFreeString(nullptr);
}

TEST(BStr, AnEmptyStringIsNotNull) {
    for (auto* const text : {SysAllocString(L""), SysAllocStringLen(nullptr, 0)}) {
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(SysStringLen(text), 0u);
        EXPECT_EQ(text[0], L'\0');
        SysFreeString(text);
    }
}

TEST(BStr, LeavesRoomToBeWritten) {
    auto* const text = SysAllocStringLen(nullptr, 2);
    EXPECT_EQ(text[2], L'\0');
    text[0] = L'x';
    text[1] = L'y';
    EXPECT_STREQ(text, L"xy");
    SysFreeString(text);
}

TEST(BStr, RefusesALengthThatItsPrefixCannotHold) {
    EXPECT_EQ(SysAllocStringLen(nullptr, std::numeric_limits<UINT>::max()), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, std::numeric_limits<UINT>::max() / 4 + 1), nullptr);
}

TEST(BStr, EveryLengthKeepsItsCharacters) {
    for (UINT length = 0; length < 300; ++length) {
        auto* const text = SysAllocStringLen(nullptr, length);
        for (UINT i = 0; i < length; ++i)
            text[i] = static_cast<wchar_t>(L'a' + i % 26);
        auto* const copy = SysAllocStringLen(text, SysStringLen(text));
        EXPECT_EQ(std::wcscmp(text, copy), 0) << length;
        SysFreeString(text);
        SysFreeString(copy);
    }
}

TEST(BStr, MayBeFreedOnAnotherThread) {
    auto* text = SysAllocString(L"from here");
    std::thread{[text] { SysFreeString(text); }}.join();
    std::thread{[&text] { text = SysAllocString(L"from there"); }}.join();
    EXPECT_STREQ(text, L"from there");
    SysFreeString(text);
}

} // namespace
