#include <TibXml/platform/BStr.h>

#include <gtest/gtest.h>

#include <cwchar>

namespace {

TEST(BStrT, IsNullAtFirst) {
    _bstr_t const text;
    EXPECT_TRUE(!text);
    EXPECT_EQ(static_cast<wchar_t const*>(text), nullptr);
    EXPECT_EQ(text.length(), 0u);
    EXPECT_TRUE(!_bstr_t{static_cast<wchar_t const*>(nullptr)});
    EXPECT_TRUE(!(_bstr_t{static_cast<BSTR>(nullptr), true}));
    EXPECT_TRUE(!(_bstr_t{static_cast<BSTR>(nullptr), false}));
}

TEST(BStrT, CopiesText) {
    _bstr_t const text{L"abc"};
    EXPECT_STREQ(text, L"abc");
    EXPECT_EQ(text.length(), 3u);
    EXPECT_FALSE(!text);
    EXPECT_FALSE(!_bstr_t{L""});
}

TEST(BStrT, CopiesOrAdoptsStrings) {
    auto* const string = SysAllocStringLen(L"a\0b", 3);
    _bstr_t const copied{string, true};
    _bstr_t const adopted{string, false};
    EXPECT_NE(static_cast<wchar_t const*>(copied), string);
    EXPECT_EQ(static_cast<wchar_t const*>(adopted), string);
    EXPECT_EQ(copied.length(), 3u);
    EXPECT_TRUE(copied == adopted);
}

TEST(BStrT, CopiesShareTheString) {
    _bstr_t const text{L"abc"};
    auto const copy = text; // NOLINT(performance-unnecessary-copy-initialization): tested
    _bstr_t assigned;
    assigned = text;
    EXPECT_EQ(static_cast<wchar_t const*>(copy), static_cast<wchar_t const*>(text));
    EXPECT_EQ(static_cast<wchar_t const*>(assigned), static_cast<wchar_t const*>(text));
    auto& same = assigned;
    assigned = same;
    EXPECT_STREQ(assigned, L"abc");
    assigned = L"new";
    EXPECT_STREQ(text, L"abc");
}

TEST(BStrT, MovesLeaveNullBehind) {
    _bstr_t source{L"abc"};
    _bstr_t target{std::move(source)};
    EXPECT_TRUE(!source); // NOLINT(bugprone-use-after-move): promised
    _bstr_t other{L"x"};
    other = std::move(target);
    EXPECT_STREQ(other, L"abc");
    EXPECT_TRUE(!target); // NOLINT(bugprone-use-after-move): promised
}

TEST(BStrT, HandsOutCopiesAndItself) {
    _bstr_t const text{L"abc"};
    auto* const copy = text.copy();
    EXPECT_STREQ(copy, L"abc");
    EXPECT_NE(copy, static_cast<wchar_t const*>(text));
    SysFreeString(copy);
    EXPECT_EQ(text.copy(false), static_cast<wchar_t const*>(text));
    EXPECT_EQ(_bstr_t{}.copy(), nullptr);
}

TEST(BStrT, ReceivesStrings) {
    _bstr_t text{L"old"};
    auto const copy = text;
    *text.GetAddress() = SysAllocString(L"new");
    EXPECT_STREQ(text, L"new");
    EXPECT_STREQ(copy, L"old");
    _bstr_t empty;
    EXPECT_EQ(empty.GetBSTR(), nullptr);
    empty.GetBSTR() = SysAllocString(L"given");
    EXPECT_STREQ(empty, L"given");
}

TEST(BStrT, AttachesAndDetachesForAllCopies) {
    _bstr_t text{L"old"};
    auto const copy = text;
    text.Attach(SysAllocString(L"new"));
    EXPECT_STREQ(copy, L"new");
    auto* const string = text.Detach();
    EXPECT_STREQ(string, L"new");
    EXPECT_TRUE(!copy);
    SysFreeString(string);
    EXPECT_EQ(_bstr_t{}.Detach(), nullptr);
}

TEST(BStrT, AssignsACopyToAllCopies) {
    _bstr_t text{L"old"};
    auto const copy = text;
    auto* const string = SysAllocString(L"new");
    text.Assign(string);
    SysFreeString(string);
    EXPECT_STREQ(copy, L"new");
    text.Assign(text.GetBSTR());
    EXPECT_STREQ(copy, L"new");
    text.Assign(nullptr);
    EXPECT_TRUE(!copy);
}

TEST(BStrT, ComparesCharacters) {
    EXPECT_TRUE(_bstr_t{L"abc"} == _bstr_t{L"abc"});
    EXPECT_TRUE(_bstr_t{L"abc"} != _bstr_t{L"abd"});
    EXPECT_TRUE(_bstr_t{L"abc"} < _bstr_t{L"abd"});
    EXPECT_TRUE(_bstr_t{} == _bstr_t{L""});
    EXPECT_TRUE(_bstr_t{} < _bstr_t{L"a"});
}

} // namespace
