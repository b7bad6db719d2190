#include <TibXml/platform/CString.h>

#include <gtest/gtest.h>

#include <clocale>
#include <map>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>
#include <unordered_set>
#include <vector>

namespace {

std::wstring_view withNul() {
    return {L"a\0b", 3};
}

TEST(CString, IsEmptyAtFirst) {
    CString const text;
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(text.GetLength(), 0);
    EXPECT_STREQ(text.GetString(), L"");
}

TEST(CString, EmptyStringsCostNoMemory) {
    // All share the one empty block, whatever they are made from.
    auto const* const shared = CString{}.GetString();
    EXPECT_EQ(CString{L""}.GetString(), shared);
    EXPECT_EQ(CString{static_cast<wchar_t const*>(nullptr)}.GetString(), shared);
    EXPECT_EQ((CString{L"abc", 0}.GetString()), shared);
    EXPECT_EQ((CString{L'x', 0}.GetString()), shared);
    EXPECT_EQ(CString{L"abc"}.Left(0).GetString(), shared);
}

TEST(CString, TakesCharactersFromPointersViewsAndRepetition) {
    EXPECT_EQ(CString{L"abc"}.view(), L"abc");
    EXPECT_EQ((CString{L"abc", 2}.view()), L"ab");
    EXPECT_EQ((CString{L"abc", -1}.view()), L"");
    EXPECT_EQ((CString{nullptr, 5}.view()), L"");
    EXPECT_EQ(CString{std::wstring_view{L"abc"}}.view(), L"abc");
    EXPECT_EQ((CString{L'x', 3}.view()), L"xxx");
    EXPECT_EQ((CString{L'x', -3}.view()), L"");
}

TEST(CString, KeepsNulsOfAKnownLength) {
    CString const text{withNul()};
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_EQ(text.view(), withNul());
    EXPECT_FALSE(text == L"a");
    EXPECT_EQ((text + L"c").GetLength(), 4);
}

TEST(CString, EndsWithANulAlways) {
    CString text{std::wstring_view{L"abcdef", 3}};
    EXPECT_EQ(text.GetAt(3), L'\0');
    text += L"xyz";
    EXPECT_EQ(text.GetString()[6], L'\0');
}

TEST(CString, CopiesShareUntilOneChanges) {
    CString const original{L"abc"};
    CString copy{original};
    EXPECT_EQ(copy.GetString(), original.GetString());
    copy += L'd';
    EXPECT_EQ(copy, L"abcd");
    EXPECT_EQ(original, L"abc");
}

TEST(CString, MovedFromStringsAreEmpty) {
    CString source{L"abc"};
    CString const target{std::move(source)};
    EXPECT_EQ(target, L"abc");
    EXPECT_TRUE(source.IsEmpty()); // NOLINT(bugprone-use-after-move): promised
    CString assigned{L"x"};
    CString other{L"y"};
    assigned = std::move(other);
    EXPECT_EQ(assigned, L"y");
    EXPECT_TRUE(other.IsEmpty()); // NOLINT(bugprone-use-after-move): promised
}

TEST(CString, SurvivesAssignmentFromItself) {
    CString text{L"abcdef"};
    auto& same = text;
    text = same;
    EXPECT_EQ(text, L"abcdef");
    text = std::move(same);
    EXPECT_EQ(text, L"abcdef");
    text = text + 3;
    EXPECT_EQ(text, L"def");
    text = text.view().substr(1, 1);
    EXPECT_EQ(text, L"e");
}

TEST(CString, AssignsNullAsEmpty) {
    CString text{L"abc"};
    text = static_cast<wchar_t const*>(nullptr);
    EXPECT_TRUE(text.IsEmpty());
    text = L"x";
    text = {};
    EXPECT_TRUE(text.IsEmpty());
    text.Empty();
    EXPECT_TRUE(text.IsEmpty());
}

TEST(CString, AppendsPartsOfItself) {
    CString text{L"abc"};
    text += text;
    EXPECT_EQ(text, L"abcabc");
    text += text.GetString() + 4;
    EXPECT_EQ(text, L"abcabcbc");
    text.Preallocate(100);
    text.Append(text.view().substr(0, 3));
    EXPECT_EQ(text, L"abcabcbcabc");
}

TEST(CString, AppendingNothingChangesNothing) {
    CString text{L"abc"};
    auto const* const before = text.GetString();
    text += L"";
    text += static_cast<wchar_t const*>(nullptr);
    text += CString{};
    EXPECT_EQ(text.GetString(), before);
    EXPECT_EQ(text, L"abc");
}

TEST(CString, RepeatedAppendingSeldomAllocates) {
    CString text;
    int moves = 0;
    for (int i = 0; i < 10000; ++i) {
        auto const* const before = text.GetString();
        text += wchar_t(L'a' + i % 26);
        moves += text.GetString() == before ? 0 : 1;
    }
    EXPECT_EQ(text.GetLength(), 10000);
    EXPECT_EQ(text.GetAt(9999), wchar_t(L'a' + 9999 % 26));
    EXPECT_LT(moves, 40);
}

TEST(CString, Concatenates) {
    CString const ab{L"ab"};
    CString const cd{L"cd"};
    EXPECT_EQ(ab + cd, L"abcd");
    EXPECT_EQ(ab + L"x", L"abx");
    EXPECT_EQ(L"x" + ab, L"xab");
    EXPECT_EQ(ab + L'x', L"abx");
    EXPECT_EQ(L'x' + ab, L"xab");
    EXPECT_EQ(ab + L"-" + cd + L'!', L"ab-cd!");
    EXPECT_EQ(CString{} + CString{}, L"");
    EXPECT_EQ(L"" + CString{}, L"");
    EXPECT_EQ(CString{} + ab, L"ab");
    EXPECT_EQ(ab, L"ab");
    EXPECT_EQ(cd, L"cd");
}

struct PartCase {
    wchar_t const* name;
    CString part;
    wchar_t const* expected;
};

TEST(CString, BringsPartsIntoRange) {
    CString const text{L"abcdef"};
    PartCase const cases[] = {
        {L"left", text.Left(2), L"ab"},
        {L"left beyond", text.Left(9), L"abcdef"},
        {L"left negative", text.Left(-1), L""},
        {L"right", text.Right(2), L"ef"},
        {L"right beyond", text.Right(9), L"abcdef"},
        {L"right negative", text.Right(-1), L""},
        {L"right none", text.Right(0), L""},
        {L"mid", text.Mid(2), L"cdef"},
        {L"mid count", text.Mid(2, 3), L"cde"},
        {L"mid beyond", text.Mid(9), L""},
        {L"mid at the end", text.Mid(6, 1), L""},
        {L"mid long", text.Mid(4, 99), L"ef"},
        {L"mid negative first", text.Mid(-3, 2), L"ab"},
        {L"mid negative count", text.Mid(1, -2), L""},
        {L"mid greatest", text.Mid(1, 2147483647), L"bcdef"},
    };
    for (auto const& [name, part, expected] : cases)
        EXPECT_EQ(part, expected) << std::string(name, name + std::wcslen(name));
}

TEST(CString, SharesAWholePart) {
    CString const text{L"abc"};
    EXPECT_EQ(text.Mid(0).GetString(), text.GetString());
    EXPECT_EQ(text.Left(3).GetString(), text.GetString());
    EXPECT_EQ(text.Right(3).GetString(), text.GetString());
}

TEST(CString, FindsTextAndCharacters) {
    CString const text{L"abcabc"};
    EXPECT_EQ(text.Find(L"bc"), 1);
    EXPECT_EQ(text.Find(L"bc", 2), 4);
    EXPECT_EQ(text.Find(L"bc", 5), -1);
    EXPECT_EQ(text.Find(L"x"), -1);
    EXPECT_EQ(text.Find(L"", 2), 2);
    EXPECT_EQ(text.Find(L"", 6), 6);
    EXPECT_EQ(text.Find(L"", 7), -1);
    EXPECT_EQ(text.Find(static_cast<wchar_t const*>(nullptr)), 0);
    EXPECT_EQ(text.Find(L"abc", -5), 0);
    EXPECT_EQ(text.Find(L'c'), 2);
    EXPECT_EQ(text.Find(L'c', 3), 5);
    EXPECT_EQ(text.Find(L'c', 99), -1);
    EXPECT_EQ(text.ReverseFind(L'a'), 3);
    EXPECT_EQ(text.ReverseFind(L'x'), -1);
    EXPECT_EQ(CString{}.ReverseFind(L'x'), -1);
}

struct ReplaceCase {
    wchar_t const* text;
    wchar_t const* from;
    wchar_t const* to;
    wchar_t const* expected;
    int count;

    /// Without it a test would be named after the addresses in here.
    friend std::ostream& operator<<(std::ostream& out, ReplaceCase const& replace) {
        return out << testing::PrintToString(replace.text);
    }
};

class CStringReplace : public testing::TestWithParam<ReplaceCase> {};

TEST_P(CStringReplace, ReplacesFromTheLeft) {
    auto const& [before, from, to, expected, count] = GetParam();
    CString text{before};
    CString const copy{text};
    EXPECT_EQ(text.Replace(from, to), count);
    EXPECT_EQ(text, expected);
    EXPECT_EQ(copy, before);
}

INSTANTIATE_TEST_SUITE_P(Cases, CStringReplace,
                         testing::Values(ReplaceCase{L"a&b&c", L"&", L"&amp;", L"a&amp;b&amp;c", 2},
                                         ReplaceCase{L"&amp;lt;", L"&amp;", L"&", L"&lt;", 1},
                                         ReplaceCase{L"aaaaa", L"aa", L"b", L"bba", 2},
                                         ReplaceCase{L"aaa", L"a", L"", L"", 3},
                                         ReplaceCase{L"aaa", L"a", nullptr, L"", 3},
                                         ReplaceCase{L"abc", L"", L"x", L"abc", 0},
                                         ReplaceCase{L"abc", nullptr, L"x", L"abc", 0},
                                         ReplaceCase{L"abc", L"x", L"y", L"abc", 0},
                                         ReplaceCase{L"", L"x", L"y", L"", 0},
                                         ReplaceCase{L"abc", L"abcd", L"y", L"abc", 0},
                                         ReplaceCase{L"aba", L"a", L"aa", L"aabaa", 2}));

TEST(CString, ReplacesWithPartsOfItself) {
    CString text{L"abcb"};
    auto const* const all = text.GetString();
    EXPECT_EQ(text.Replace(all + 3, all), 2);
    EXPECT_EQ(text, L"aabcbcabcb");
}

TEST(CString, ReplacesCharactersInItsOwnCopyOnly) {
    CString text{L"a.b.c"};
    CString const copy{text};
    EXPECT_EQ(text.Replace(L'.', L'/'), 2);
    EXPECT_EQ(text, L"a/b/c");
    EXPECT_EQ(copy, L"a.b.c");
    EXPECT_EQ(text.Replace(L'x', L'y'), 0);
    EXPECT_EQ(text.Replace(L'/', L'/'), 2);
    EXPECT_EQ(text, L"a/b/c");
}

TEST(CString, ComparesByCharacterValue) {
    CString const text{L"abc"};
    EXPECT_EQ(text.Compare(L"abc"), 0);
    EXPECT_LT(text.Compare(L"abd"), 0);
    EXPECT_GT(text.Compare(L"abC"), 0);
    EXPECT_GT(text.Compare(L"ab"), 0);
    EXPECT_LT(text.Compare(L"abcd"), 0);
    EXPECT_GT(text.Compare(static_cast<wchar_t const*>(nullptr)), 0);
    EXPECT_EQ(CString{}.Compare(static_cast<wchar_t const*>(nullptr)), 0);
    EXPECT_LT(CString{L"\uFFFD"}.Compare(L"\U00010000"), 0);
}

TEST(CString, ComparesWithoutCase) {
    CString const text{L"UserCustomizable"};
    EXPECT_EQ(text.CompareNoCase(L"usercustomizable"), 0);
    EXPECT_EQ(text.CompareNoCase(L"USERCUSTOMIZABLE"), 0);
    EXPECT_LT(text.CompareNoCase(L"usercustomizablf"), 0);
    EXPECT_GT(text.CompareNoCase(L"usercustom"), 0);
    EXPECT_LT(text.CompareNoCase(L"usercustomizables"), 0);
    EXPECT_GT(text.CompareNoCase(nullptr), 0);
    // Lower case decides, so a letter comes after the signs between the two cases.
    EXPECT_GT(CString{L"A"}.CompareNoCase(L"_"), 0);
}

TEST(CString, ComparesInBothDirections) {
    CString const b{L"b"};
    EXPECT_TRUE(b == L"b" && L"b" == b && b == CString{L"b"});
    EXPECT_TRUE(b != L"a" && L"a" != b && b != CString{L"a"});
    EXPECT_TRUE(b < L"c" && L"a" < b && b < CString{L"c"});
    EXPECT_TRUE(b > L"a" && L"c" > b && b > CString{L"a"});
    EXPECT_TRUE(b <= L"b" && L"b" <= b && b <= CString{L"b"});
    EXPECT_TRUE(b >= L"b" && L"b" >= b && b >= CString{L"b"});
    EXPECT_FALSE(b < L"b" || L"b" < b || b < b);
    EXPECT_FALSE(b > L"b" || L"b" > b || b > b);
    EXPECT_TRUE(CString{} == static_cast<wchar_t const*>(nullptr));
}

TEST(CString, WorksAsAKey) {
    std::map<CString, int> const ordered{{L"b", 2}, {L"a", 1}};
    EXPECT_EQ(ordered.begin()->second, 1);
    std::unordered_set<CString> const hashed{L"a", L"b", L"a"};
    EXPECT_EQ(hashed.size(), 2u);
    EXPECT_TRUE(hashed.contains(L"b"));
}

TEST(CString, ConvertsWithoutBeingAsked) {
    CString const text{L"abc"};
    wchar_t const* const pointer = text;
    std::wstring_view const view = text;
    EXPECT_STREQ(pointer, L"abc");
    EXPECT_EQ(view, L"abc");
    EXPECT_EQ(text[1], L'b');
    EXPECT_EQ(std::wcslen(text), 3u);
}

TEST(CString, LetsItsBufferBeWritten) {
    CString text{L"abc"};
    CString const copy{text};
    auto* const buffer = text.GetBuffer(6);
    EXPECT_STREQ(buffer, L"abc");
    std::wcscpy(buffer + 3, L"def");
    text.ReleaseBuffer();
    EXPECT_EQ(text, L"abcdef");
    EXPECT_EQ(copy, L"abc");
    text.GetBuffer(1)[0] = L'X';
    text.ReleaseBuffer(2);
    EXPECT_EQ(text, L"Xb");
}

TEST(CString, TheBufferOfAnEmptyStringIsItsOwn) {
    CString text;
    text.GetBuffer(0)[0] = L'\0';
    text.ReleaseBuffer();
    EXPECT_TRUE(text.IsEmpty());
    CString untouched;
    untouched.ReleaseBuffer();
    EXPECT_TRUE(untouched.IsEmpty());
    EXPECT_STREQ(CString{}.GetString(), L"");
}

TEST(CString, FindsTheEndOfAFullBuffer) {
    CString text;
    auto* const buffer = text.GetBuffer(4);
    std::wmemset(buffer, L'x', 4);
    text.ReleaseBuffer();
    EXPECT_EQ(text, L"xxxx");
}

TEST(CString, RefusesToBeTooLong) {
    CString text{L"abc"};
    EXPECT_THROW(text.Preallocate(CString::MaxLength() + 1), std::length_error);
    EXPECT_THROW(text.GetBuffer(2147483647), std::length_error);
    EXPECT_THROW((CString{L'x', CString::MaxLength() + 1}), std::length_error);
    EXPECT_THROW(text.Append({L"x", std::size_t(CString::MaxLength())}), std::length_error);
    EXPECT_EQ(text, L"abc");
}

TEST(CString, SwapsInConstantTime) {
    CString a{L"a"};
    CString b{L"b"};
    auto const* const oldA = a.GetString();
    swap(a, b);
    EXPECT_EQ(b.GetString(), oldA);
    EXPECT_EQ(a, L"b");
}

TEST(CString, CopiesMayLiveOnDifferentThreads) {
    CString const text{L"shared by all"};
    std::vector<std::thread> threads;
    std::vector<int> lengths(4);
    threads.reserve(lengths.size());
    for (auto& length : lengths) {
        threads.emplace_back([&length, copy = text] {
            for (int i = 0; i < 1000; ++i) {
                CString mine{copy};
                if (i % 10 == 0) mine += L"!";
                length += mine.GetLength();
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    for (auto const length : lengths)
        EXPECT_EQ(length, 13 * 1000 + 100);
    EXPECT_EQ(text, L"shared by all");
}

} // namespace
