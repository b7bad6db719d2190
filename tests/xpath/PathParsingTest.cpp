#include <TibXml/WXPath.h>

#include <gtest/gtest.h>

#include "PathParts.h"

namespace {

struct Row {
    std::wstring input;
    std::wstring prefix;
    Steps steps;
    std::wstring rebuilt;
};

std::vector<Row> const rows = {
    // one of each kind
    {L"a/b[@x='1']/c", L"", {{L"a", {}}, {L"b", {L"@x='1'"}}, {L"c", {}}}, L"a/b[@x='1']/c"},
    {L"a/b[@x=\"1\"]", L"", {{L"a", {}}, {L"b", {L"@x='1'"}}}, L"a/b[@x='1']"},
    {L"/root//item[2]", L"/", {{L"root", {}}, {L"", {}}, {L"item", {L"2"}}}, L"/root//item[2]"},
    {L"//item", L"//", {{L"item", {}}}, L"//item"},
    {L"@attr", L"", {{L"@attr", {}}}, L"@attr"},
    {L"parent::*", L"", {{L"parent::*", {}}}, L"parent::*"},
    {L"child::*", L"", {{L"child::*", {}}}, L"child::*"},
    {L"../a", L"../", {{L"a", {}}}, L"../a"},
    {L"a/../b", L"", {{L"a", {}}, {L"..", {}}, {L"b", {}}}, L"a/../b"},
    {L"[1]", L"", {{L"", {L"1"}}}, L"[1]"},
    {L"/", L"/", {}, L"/"},
    // prefixes
    {L"", L"", {}, L""},
    {L".", L".", {}, L"."},
    {L"..", L"..", {}, L".."},
    {L"./", L"./", {}, L"./"},
    {L"//", L"//", {}, L"//"},
    {L"./a", L"./", {{L"a", {}}}, L"./a"},
    {L".//a", L".//", {{L"a", {}}}, L".//a"},
    {L"../../a", L"../../", {{L"a", {}}}, L"../../a"},
    {L".a", L".", {{L"a", {}}}, L".a"},
    {L".5", L"", {{L".5", {}}}, L".5"},
    {L"/[1]", L"/", {{L"", {L"1"}}}, L"/[1]"},
    {L" /a", L"", {{L" ", {}}, {L"a", {}}}, L" /a"},
    // separators
    {L"a//b", L"", {{L"a", {}}, {L"", {}}, {L"b", {}}}, L"a//b"},
    {L"a/", L"", {{L"a", {}}, {L"", {}}}, L"a"},
    {L"a///", L"", {{L"a", {}}, {L"", {}}, {L"", {}}, {L"", {}}}, L"a"},
    {L"/a/", L"/", {{L"a", {}}, {L"", {}}}, L"/a"},
    {L"a/.", L"", {{L"a", {}}, {L".", {}}}, L"a/."},
    {L"a/.//b", L"", {{L"a", {}}, {L".", {}}, {L"", {}}, {L"b", {}}}, L"a/.//b"},
    // spaces
    {L"a / b", L"", {{L"a ", {}}, {L" b", {}}}, L"a / b"},
    {L"a[ x  = 1 ]", L"", {{L"a", {L" x  = 1 "}}}, L"a[ x  = 1 ]"},
    // clauses
    {L"a[x][y]", L"", {{L"a", {L"x", L"y"}}}, L"a[x][y]"},
    {L"a[x]b[y]", L"", {{L"ab", {L"x", L"y"}}}, L"ab[x][y]"},
    {L"a[]", L"", {{L"a", {L""}}}, L"a[]"},
    {L"a[b/c]/d", L"", {{L"a", {L"b/c"}}, {L"d", {}}}, L"a[b/c]/d"},
    {L"a[../b]", L"", {{L"a", {L"../b"}}}, L"a[../b]"},
    {L"a[b[1]]", L"", {{L"a]", {L"b[1"}}}, L"a][b[1]"},
    {L"a[1", L"", {{L"a", {L"1"}}}, L"a[1]"},
    {L"a[", L"", {{L"a", {L""}}}, L"a[]"},
    {L"[", L"", {{L"", {L""}}}, L"[]"},
    {L"]", L"", {{L"]", {}}}, L"]"},
    {L"a]", L"", {{L"a]", {}}}, L"a]"},
    {L"a[text()='x']", L"", {{L"a", {L"text()='x'"}}}, L"a[text()='x']"},
    // literals
    {L"a[.='/']", L"", {{L"a", {L".='/'"}}}, L"a[.='/']"},
    {L"a[.=']']/b", L"", {{L"a", {L".=']'"}}, {L"b", {}}}, L"a[.=']']/b"},
    {L"a[.='[']", L"", {{L"a", {L".='['"}}}, L"a[.='[']"},
    {L"a[.=\"it's\"]", L"", {{L"a", {L".='it's'"}}}, L"a[.='it's']"},
    {L"a[.='say \"x\"']", L"", {{L"a", {L".='say \"x\"'"}}}, L"a[.='say \"x\"']"},
    {L"a[.='']", L"", {{L"a", {L".=''"}}}, L"a[.='']"},
    {L"a'b'", L"", {{L"ab", {}}}, L"ab"},
    {L"'a b'", L"", {{L"a b", {}}}, L"a b"},
    {L"'a/b'/c", L"", {{L"a/b", {}}, {L"c", {}}}, L"a/b/c"},
    {L"''", L"", {{L"", {}}}, L""},
    {L"/''", L"/", {{L"", {}}}, L""},
    // a quoted sign outside of brackets counts like a bare one
    {L"'/'a", L"/", {{L"a", {}}}, L"/a"},
    {L"'.'/a", L"./", {{L"a", {}}}, L"./a"},
    {L"a'/'b", L"", {{L"a", {}}, {L"b", {}}}, L"a/b"},
    {L"a'['1]", L"", {{L"a", {L"1"}}}, L"a[1]"},
    // quotes without a partner
    {L"'abc", L"", {}, L""},
    {L"a'bc", L"", {{L"a", {}}}, L"a"},
    {L"a[x='1]/b", L"", {{L"a", {L"x="}}}, L"a[x=]"},
    {L"a/b[\"", L"", {{L"a", {}}, {L"b", {L""}}}, L"a/b[]"},
    // letters beyond ASCII, of two, three and four bytes
    {L"gr\u00FC\u00DFe/\u00E9t\u00E9",
     L"",
     {{L"gr\u00FC\u00DFe", {}}, {L"\u00E9t\u00E9", {}}},
     L"gr\u00FC\u00DFe/\u00E9t\u00E9"},
    {L"\u05D0/\u6771\u4EAC[@\u540D='\u20AC']",
     L"",
     {{L"\u05D0", {}}, {L"\u6771\u4EAC", {L"@\u540D='\u20AC'"}}},
     L"\u05D0/\u6771\u4EAC[@\u540D='\u20AC']"},
    {L"a\u00F7\u00B7\u00D7b", L"", {{L"a\u00F7\u00B7\u00D7b", {}}}, L"a\u00F7\u00B7\u00D7b"},
    {L"\U0001F600[\U0001F601]", L"", {{L"\U0001F600", {L"\U0001F601"}}}, L"\U0001F600[\U0001F601]"},
    {L"\u00E9'\u00E8'\u00EA", L"", {{L"\u00E9\u00E8\u00EA", {}}}, L"\u00E9\u00E8\u00EA"},
};

TEST(PathParsing, SplitsIntoPrefixAndSteps) {
    for (Row const& row : rows) {
        WXPath const path(row.input.c_str());
        SCOPED_TRACE(printable(row.input));
        EXPECT_EQ(printable(prefixOf(path)), printable(row.prefix));
        EXPECT_EQ(stepsOf(path), row.steps);
        EXPECT_EQ(path.IsEmpty(), row.steps.empty());
    }
}

TEST(PathParsing, KeepsTheStringItWasMadeOf) {
    for (Row const& row : rows) {
        WXPath const path(row.input.c_str());
        EXPECT_EQ(stringOf(path), row.input);
        EXPECT_EQ(path.IsEmpty(), row.steps.empty());
        EXPECT_EQ(stringOf(path), row.input) << "after it was taken apart";
    }
}

TEST(PathParsing, PutsTheStringTogetherAgain) {
    for (Row const& row : rows) {
        EXPECT_EQ(printable(rebuilt(WXPath(row.input.c_str()))), printable(row.rebuilt))
            << printable(row.input);
    }
}

TEST(PathParsing, WhatIsNoCharacterIsReplacedInTheStepsOnly) {
    std::wstring const surrogate{L'a', static_cast<wchar_t>(0xD800), L'b'};
    WXPath const path(surrogate.c_str());
    EXPECT_EQ(stringOf(path), surrogate);
    EXPECT_EQ(rebuilt(path), L"a\uFFFDb");
    EXPECT_EQ(stringOf(path), surrogate);
}

TEST(PathParsing, ANulEndsTheSteps) {
    CString const text(L"a/b\0c", 5);
    WXPath const path(text);
    EXPECT_EQ(path.ToString().GetLength(), 5);
    EXPECT_EQ(rebuilt(path), L"a/b");
}

TEST(PathParsing, NullIsTheEmptyString) {
    WXPath const path(static_cast<wchar_t const*>(nullptr));
    EXPECT_TRUE(path.IsEmpty());
    EXPECT_EQ(stringOf(path), L"");
}

TEST(PathParsing, LongPathsAreNoProblem) {
    std::wstring text = L"/";
    for (int step = 0; step < 20000; ++step) {
        text += L"step[@id='1']/";
    }
    text.pop_back();
    EXPECT_EQ(rebuilt(WXPath(text.c_str())), text);
}

} // namespace
