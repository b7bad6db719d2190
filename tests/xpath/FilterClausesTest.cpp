#include <TibXml/WXPath.h>

#include <gtest/gtest.h>

#include "PathParts.h"

#include <clocale>
#include <limits>

namespace {

struct GetRow {
    wchar_t const* path;
    std::int32_t index;
    bool found;
    wchar_t const* clause;
};

std::vector<GetRow> const getRows = {
    {L"a[x][y]", 0, true, L"x"},
    {L"a[x][y]", 1, true, L"y"},
    {L"a[x][y]", 2, false, L""},
    {L"a[x][y]", -1, false, L""},
    {L"a[x][y]", std::numeric_limits<std::int32_t>::max(), false, L""},
    {L"a[x][y]", std::numeric_limits<std::int32_t>::min(), false, L""},
    {L"a[x]/b", 0, false, L""},
    {L"a[x]/b[y]", 0, true, L"y"},
    {L"a[]", 0, true, L""},
    {L"a", 0, false, L""},
    {L"", 0, false, L""},
    {L"/", 0, false, L""},
};

TEST(GetFilterClause, ReadsTheClausesOfTheLeaf) {
    for (GetRow const& row : getRows) {
        SCOPED_TRACE(printable(row.path));
        CString clause = L"what was here before";
        EXPECT_EQ(WXPath(row.path).GetFilterClause(row.index, clause), row.found) << row.index;
        EXPECT_EQ(wide(clause), row.clause);
    }
}

struct EditRow {
    wchar_t const* path;
    wchar_t const* clause;
    bool result;
    wchar_t const* rebuilt;
};

std::vector<EditRow> const addRows = {
    // onto the leaf
    {L"a", L"1", true, L"a[1]"},
    {L"a/b", L"@x='1'", true, L"a/b[@x='1']"},
    {L"a/b[x]", L"y", true, L"a/b[x][y]"},
    {L"a", L"", true, L"a[]"},
    {L"/a", L"x=1", true, L"/a[x=1]"},
    // steps back
    {L"a/b", L"../@id='3'", true, L"a[@id='3']/b"},
    {L"a/b", L"./@id='3'", true, L"a/b[@id='3']"},
    {L"a/b", L"././@id='3'", true, L"a/b[@id='3']"},
    {L"a/b", L"./.././@id='3'", true, L"a[@id='3']/b"},
    {L"a/b/c", L"../../x='1'", true, L"a[x='1']/b/c"},
    {L"a[x]/b", L"../y=1", true, L"a[x][y=1]/b"},
    {L"a/b", L".././../x='1'", false, L"a/b"},
    {L"a/b", L"../../x='1'", false, L"a/b"},
    {L"a", L"../x=1", false, L"a"},
    {L"a/b", L"../=", true, L"a[=]/b"},
    {L"a//b", L"../x=1", true, L"a/[x=1]/b"},
    // only the beginning counts
    {L"a/b", L"x=../y", true, L"a/b[x=../y]"},
    {L"a/b", L" ../x=1", true, L"a/b[ ../x=1]"},
    {L"a/b", L"..", true, L"a/b[..]"},
    {L"a/b", L".../x=1", true, L"a/b[.../x=1]"},
    // without a comparison: to the leaf as it is
    {L"a/b", L"../x", true, L"a/b[../x]"},
    {L"a/b", L"./x", true, L"a/b[./x]"},
    {L"a", L"../../x", true, L"a[../../x]"},
    // empty paths
    {L"", L"1", false, L""},
    {L"", L"x=1", false, L""},
    {L"/", L"1", false, L"/"},
    {L"..", L"../x=1", false, L".."},
};

TEST(AddFilterClause, PutsAClauseOnTheStepItIsAbout) {
    for (EditRow const& row : addRows) {
        SCOPED_TRACE(printable(row.path) + " + " + printable(row.clause));
        WXPath path(row.path);
        EXPECT_EQ(path.AddFilterClause(row.clause), row.result);
        EXPECT_EQ(printable(stringOf(path)), printable(row.rebuilt));
    }
}

TEST(AddFilterClause, KeepsTheGivenStringWhenNothingIsAdded) {
    WXPath path(L"a/b/");
    EXPECT_FALSE(path.AddFilterClause(L"../../../x=1"));
    EXPECT_EQ(stringOf(path), L"a/b/");
}

TEST(AddFilterClause, DropsTheStringWhenSomethingIsAdded) {
    WXPath path(L"a[@x=\"1\"]");
    EXPECT_TRUE(path.AddFilterClause(L"2"));
    EXPECT_EQ(stringOf(path), L"a[@x='1'][2]");
}

TEST(AddFilterClause, TakesClausesAsTheyAreWritten) {
    WXPath path(L"a");
    EXPECT_TRUE(path.AddFilterClause(L"@x=\"1\""));
    EXPECT_EQ(stringOf(path), L"a[@x=\"1\"]");
}

std::vector<EditRow> const removeRows = {
    {L"a[x]", L"x", true, L"a"},
    {L"a[@x='1']", L"@X='1'", true, L"a"},
    {L"a[x][y][x]", L"x", true, L"a[y][x]"},
    {L"a[x][Y][z]", L"y", true, L"a[x][z]"},
    {L"a[\u00E9]", L"\u00C9", true, L"a"},
    {L"a[x]", L"xy", true, L"a[x]"},
    {L"a[xy]", L"x", true, L"a[xy]"},
    {L"a[x]", L"", true, L"a[x]"},
    {L"a[]", L"", true, L"a"},
    {L"a[x]/b", L"x", true, L"a[x]/b"},
    {L"a", L"x", true, L"a"},
};

// Lower-casing beyond ASCII needs a locale which knows these letters.
class WithUtf8Locale {
public:
    WithUtf8Locale() : known(std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr) {}

    WithUtf8Locale(WithUtf8Locale const&) = delete;
    WithUtf8Locale& operator=(WithUtf8Locale const&) = delete;

    ~WithUtf8Locale() { std::setlocale(LC_CTYPE, "C"); }

    bool const known;
};

TEST(RemoveFilterClause, RemovesTheFirstEqualClauseOfTheLeaf) {
    WithUtf8Locale const locale;
    ASSERT_TRUE(locale.known);
    for (EditRow const& row : removeRows) {
        SCOPED_TRACE(printable(row.path) + " - " + printable(row.clause));
        WXPath path(row.path);
        path.RemoveFilterClause(row.clause);
        EXPECT_EQ(printable(stringOf(path)), printable(row.rebuilt));
    }
}

TEST(RemoveFilterClause, DropsTheStringEvenWhenNothingMatches) {
    WXPath path(L"a/b/");
    path.RemoveFilterClause(L"x");
    EXPECT_EQ(stringOf(path), L"a/b");
}

TEST(RemoveFilterClause, LeavesEmptyPathsAlone) {
    WXPath path(L"'/'");
    path.RemoveFilterClause(L"x");
    EXPECT_EQ(stringOf(path), L"'/'");
}

TEST(RemoveFilterClause, ComparesBeyondNuls) {
    WXPath path(L"a");
    EXPECT_TRUE(path.AddFilterClause(CString(L"x\0y", 3)));
    path.RemoveFilterClause(L"x");
    EXPECT_EQ(clausesOf(path).size(), 1U);
    path.RemoveFilterClause(CString(L"X\0Y", 3));
    EXPECT_EQ(clausesOf(path).size(), 0U);
}

struct NormalizeRow {
    wchar_t const* path;
    wchar_t const* normal;
};

std::vector<NormalizeRow> const normalizeRows = {
    {L"a/b[../@x='1']/c", L"a[@x='1']/b/c"},
    {L"a/b/c[../../@x='1'][../@y='2'][@z='3']", L"a[@x='1']/b[@y='2']/c[@z='3']"},
    {L"a[1]/b[../x=1][2][../y=2]", L"a[1][x=1][y=2]/b[2]"},
    // what leads beyond the root stays
    {L"a[../x=1]", L"a[../x=1]"},
    {L"a/b[../../x=1][../y=1]", L"a[y=1]/b[../../x=1]"},
    {L"a[./../x=1]", L"a[./../x=1]"},
    // what begins with neither stays
    {L"a/b[x=../y]", L"a/b[x=../y]"},
    {L"a/b[x]", L"a/b[x]"},
    {L"a/b[..]", L"a/b[..]"},
    // without a comparison: to the leaf
    {L"a[../x]/b", L"a/b[../x]"},
    {L"a[../x][1]/b[2]/c[3]", L"a[1]/b[2]/c[3][../x]"},
    {L"a[./x]/b", L"a/b[x]"},
    {L"a/b[../x]", L"a/b[../x]"},
    // about its own step: kept once, in its place
    {L"a[./x=1]", L"a[x=1]"},
    {L"a[././x=1]", L"a[x=1]"},
    {L"a/b[1][./x=1][2]", L"a/b[1][x=1][2]"},
    {L"a[1][./x=1][2]/b", L"a[1][x=1][2]/b"},
    {L"a/b[./x]", L"a/b[x]"},
    {L"a/b[1][./x][2]", L"a/b[1][x][2]"},
    {L"a/b[./../x]", L"a/b[../x]"},
    {L"a/b[./../x=1]", L"a[x=1]/b"},
    // with nothing to do
    {L"", L""},
    {L"/", L"/"},
    {L"/a/b/", L"/a/b"},
    {L"a[@x=\"1\"]", L"a[@x='1']"},
    {L"'/'", L"/"},
};

TEST(Normalize, MovesRelativeClausesToTheirSteps) {
    for (NormalizeRow const& row : normalizeRows) {
        WXPath path(row.path);
        path.Normalize();
        EXPECT_EQ(printable(stringOf(path)), printable(row.normal)) << printable(row.path);
    }
}

TEST(Normalize, AgainChangesNothing) {
    for (NormalizeRow const& row : normalizeRows) {
        WXPath path(row.path);
        path.Normalize();
        path.Normalize();
        EXPECT_EQ(printable(stringOf(path)), printable(row.normal)) << printable(row.path);
    }
}

} // namespace
