#include <TibXml/WXPath.h>

#include <gtest/gtest.h>

#include "PathParts.h"

#include <functional>
#include <type_traits>
#include <utility>

namespace {

static_assert(std::is_nothrow_move_constructible_v<WXPath>);
static_assert(std::is_nothrow_move_assignable_v<WXPath>);
static_assert(std::is_nothrow_default_constructible_v<WXPath>);
static_assert(std::is_convertible_v<wchar_t const*, WXPath>);
static_assert(std::is_convertible_v<CString, WXPath>);

// A path moved to itself: the only way to one that holds its steps but no string.
void moveToItself(WXPath& path) {
    WXPath& same = path;
    path = std::move(same);
}

struct Condition {
    char const* name;
    bool keepsString;
    std::function<WXPath(wchar_t const*)> make;
};

// Every condition in which one and the same path can be, as far as its caches go.
std::vector<Condition> const conditions = {
    {"fresh", true, [](wchar_t const* text) { return WXPath(text); }},
    {"taken apart", true,
     [](wchar_t const* text) {
         WXPath path(text);
         EXPECT_GE(stepsOf(path).size(), path.IsEmpty() ? 0U : 1U);
         return path;
     }},
    {"without string, not taken apart", false,
     [](wchar_t const* text) {
         WXPath path(text);
         moveToItself(path);
         return path;
     }},
    {"without string, taken apart", false,
     [](wchar_t const* text) {
         WXPath path(text);
         EXPECT_EQ(path.IsEmpty(), path.GetLeaf().IsEmpty());
         moveToItself(path);
         return path;
     }},
    {"string put together", false,
     [](wchar_t const* text) {
         WXPath path(text);
         moveToItself(path);
         EXPECT_EQ(path.ToString().GetLength(), static_cast<int>(stringOf(path).size()));
         return path;
     }},
    {"copied fresh", true,
     [](wchar_t const* text) {
         WXPath const path(text);
         return WXPath(path); // NOLINT(performance-unnecessary-copy-initialization): the point
     }},
    {"copied when taken apart", true,
     [](wchar_t const* text) {
         WXPath const path(text);
         EXPECT_EQ(path.IsEmpty(), path.GetLeaf().IsEmpty());
         return WXPath(path);
     }},
    {"moved fresh", true,
     [](wchar_t const* text) {
         WXPath path(text);
         return WXPath(std::move(path));
     }},
    {"moved when taken apart", true,
     [](wchar_t const* text) {
         WXPath path(text);
         EXPECT_EQ(path.IsEmpty(), path.GetLeaf().IsEmpty());
         return WXPath(std::move(path));
     }},
    {"copy-assigned over another", true,
     [](wchar_t const* text) {
         WXPath const path(text);
         WXPath other(L"/other[1]/path");
         other = path;
         return other;
     }},
    {"move-assigned over another taken apart", true,
     [](wchar_t const* text) {
         WXPath path(text);
         WXPath other(L"/other[1]/path");
         EXPECT_FALSE(other.IsEmpty());
         other = std::move(path);
         return other;
     }},
};

using Check = std::function<void(WXPath&, bool keepsString)>;

void inEveryCondition(wchar_t const* text, Check const& check) {
    for (Condition const& condition : conditions) {
        SCOPED_TRACE(std::string(condition.name) + ", " + printable(text));
        WXPath path = condition.make(text);
        check(path, condition.keepsString);
    }
}

struct PartsRow {
    wchar_t const* path;
    wchar_t const* root;
    wchar_t const* leaf;
    wchar_t const* parent;
    wchar_t const* child;
};

std::vector<PartsRow> const partsRows = {
    {L"", L"", L"", L"", L""},
    {L"/", L"", L"", L"", L""},
    {L".", L"", L"", L"", L""},
    {L"../", L"", L"", L"", L""},
    {L"a", L"a", L"a", L"", L""},
    {L"/a", L"/a", L"a", L"/", L""},
    {L"//a", L"//a", L"a", L"//", L""},
    {L"./a", L"./a", L"a", L"./", L""},
    {L"/a/b[1]", L"/a", L"b[1]", L"/a", L"b[1]"},
    {L"a/b[1]/c", L"a", L"c", L"a/b[1]", L"b[1]/c"},
    {L"a//b", L"a", L"b", L"a", L"/b"},
    {L"a/", L"a", L"", L"a", L""},
    {L"../a[x][y]/@b", L"../a[x][y]", L"@b", L"../a[x][y]", L"@b"},
};

TEST(WXPathParts, RootAndParentKeepThePrefixLeafAndChildDoNot) {
    for (PartsRow const& row : partsRows) {
        inEveryCondition(row.path, [&row](WXPath& path, bool) {
            EXPECT_EQ(printable(stringOf(path.GetRoot())), printable(row.root));
            EXPECT_EQ(printable(stringOf(path.GetLeaf())), printable(row.leaf));
            EXPECT_EQ(printable(stringOf(path.GetParentOfLeaf())), printable(row.parent));
            EXPECT_EQ(printable(stringOf(path.GetChildOfRoot())), printable(row.child));
        });
    }
}

TEST(WXPathParts, OfAPathOfOneStepAreEmptyButForThePrefix) {
    WXPath const path(L"/a");
    EXPECT_TRUE(path.GetParentOfLeaf().IsEmpty());
    EXPECT_TRUE(path.GetChildOfRoot().IsEmpty());
    EXPECT_EQ(stringOf(path.GetParentOfLeaf()), L"/");
    EXPECT_EQ(prefixOf(path.GetChildOfRoot()), L"");
}

TEST(WXPathParts, AreIndependentOfTheirSource) {
    WXPath path(L"a/b");
    WXPath leaf = path.GetLeaf();
    EXPECT_TRUE(leaf.AddFilterClause(L"1"));
    EXPECT_EQ(stringOf(leaf), L"b[1]");
    EXPECT_EQ(rebuilt(path), L"a/b");
}

TEST(WXPath, DefaultIsEmptyWithoutPrefix) {
    WXPath const path;
    EXPECT_TRUE(path.IsEmpty());
    EXPECT_EQ(stringOf(path), L"");
    EXPECT_EQ(prefixOf(path), L"");
    EXPECT_TRUE(path.GetRoot().IsEmpty());
}

TEST(WXPath, AllConversionsGiveTheSameString) {
    inEveryCondition(L"a/b[1]", [](WXPath& path, bool) {
        wchar_t const* const pointer = path;
        CString const& reference = path;
        EXPECT_STREQ(pointer, L"a/b[1]");
        EXPECT_EQ(&reference, &path.ToString());
        EXPECT_EQ(pointer, path.ToString().GetString());
    });
}

TEST(WXPath, StringIsTheGivenOneOrPutTogether) {
    inEveryCondition(L"a/b[@x=\"1\"]/", [](WXPath& path, bool keepsString) {
        wchar_t const* const expected = keepsString ? L"a/b[@x=\"1\"]/" : L"a/b[@x='1']";
        EXPECT_STREQ(path, expected);
        EXPECT_FALSE(path.IsEmpty());
        EXPECT_STREQ(path, expected);
    });
}

TEST(WXPath, CopiesAreEqualAndIndependent) {
    inEveryCondition(L"../a/b[1]", [](WXPath& path, bool) {
        WXPath copy(path);
        EXPECT_EQ(stringOf(copy), stringOf(path));
        EXPECT_TRUE(copy.AddFilterClause(L"2"));
        EXPECT_EQ(stringOf(copy), L"../a/b[1][2]");
        EXPECT_EQ(stringOf(path), L"../a/b[1]");
    });
}

TEST(WXPath, CopyAssignmentReplacesEverything) {
    inEveryCondition(L"../a/b[1]", [](WXPath& path, bool) {
        for (wchar_t const* old : {L"", L"/", L"/x/y[2]"}) {
            WXPath target(old);
            target = path;
            EXPECT_EQ(stringOf(target), stringOf(path));
            EXPECT_EQ(prefixOf(target), L"../");
            EXPECT_EQ(stepsOf(target), stepsOf(path));
        }
    });
}

TEST(WXPath, CopyAssignmentToItselfChangesNothing) {
    inEveryCondition(L"/a/b[@x=\"1\"]", [](WXPath& path, bool keepsString) {
        WXPath const& same = path;
        path = same;
        EXPECT_EQ(stringOf(path), keepsString ? L"/a/b[@x=\"1\"]" : L"/a/b[@x='1']");
        EXPECT_EQ(stepsOf(path), (Steps{{L"a", {}}, {L"b", {L"@x='1'"}}}));
    });
}

void expectMovedFrom(WXPath& path, wchar_t const* prefix) {
    EXPECT_TRUE(path.IsEmpty());
    EXPECT_EQ(stringOf(path), prefix);
    EXPECT_EQ(prefixOf(path), prefix);
    EXPECT_FALSE(path.AddFilterClause(L"1"));
    EXPECT_EQ(stringOf(path.GetRoot()), L"");
}

TEST(WXPath, MovedFromPathKeepsItsPrefixOnly) {
    for (auto const& [text, prefix] :
         std::vector<std::pair<wchar_t const*, wchar_t const*>>{{L"../a/b[1]", L"../"},
                                                                {L"a/b", L""},
                                                                {L"//a/", L"//"},
                                                                {L"/", L"/"},
                                                                {L"", L""},
                                                                {L"'/'a", L"/"},
                                                                {L".5", L""}}) {
        inEveryCondition(text, [prefix = prefix](WXPath& path, bool) {
            WXPath const expected(path);
            WXPath const target(std::move(path));
            expectMovedFrom(path,
                            prefix); // NOLINT(bugprone-use-after-move): what is left is promised
            EXPECT_EQ(stringOf(target), stringOf(expected));
            EXPECT_EQ(stepsOf(target), stepsOf(expected));
        });
    }
}

TEST(WXPath, MoveAssignmentLeavesTheSourceItsPrefixOnly) {
    inEveryCondition(L"../a/b[1]", [](WXPath& path, bool) {
        WXPath target(L"/x/y");
        EXPECT_FALSE(target.IsEmpty());
        target = std::move(path);
        expectMovedFrom(path, L"../"); // NOLINT(bugprone-use-after-move): what is left is promised
        EXPECT_EQ(stringOf(target), L"../a/b[1]");
        EXPECT_EQ(prefixOf(target), L"../");
        EXPECT_EQ(stepsOf(target), (Steps{{L"a", {}}, {L"b", {L"1"}}}));
    });
}

TEST(WXPath, MovedFromPathsCanBeMovedCopiedAndUsedAgain) {
    inEveryCondition(L"../a", [](WXPath& path, bool) {
        WXPath const first(std::move(path));
        // NOLINTBEGIN(bugprone-use-after-move): what is left is promised
        WXPath copy(path);
        WXPath second(std::move(path));
        expectMovedFrom(copy, L"../");
        expectMovedFrom(second, L"../");
        expectMovedFrom(path, L"../");
        path = WXPath(L"b/c");
        // NOLINTEND(bugprone-use-after-move)
        EXPECT_EQ(stringOf(path), L"b/c");
        EXPECT_EQ(stringOf(path.GetLeaf()), L"c");
        EXPECT_EQ(stringOf(first), L"../a");
    });
}

TEST(WXPath, MovingToItselfLosesTheStringOnly) {
    inEveryCondition(L"/a/b[@x=\"1\"]/", [](WXPath& path, bool) {
        moveToItself(path);
        EXPECT_EQ(stringOf(path), L"/a/b[@x='1']");
        EXPECT_EQ(stepsOf(path), (Steps{{L"a", {}}, {L"b", {L"@x='1'"}}, {L"", {}}}));
        EXPECT_EQ(prefixOf(path), L"/");
    });
}

TEST(WXPath, EmptyPathsWithPrefixMoveToThemselves) {
    inEveryCondition(L"'/'.", [](WXPath& path, bool) {
        moveToItself(path);
        EXPECT_TRUE(path.IsEmpty());
        EXPECT_EQ(stringOf(path), L"/.");
    });
}

} // namespace
