// Expressions and trees that are long, deep or both.
#include <gtest/gtest.h>

#include <tree/Editing.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

std::wstring repeated(std::wstring_view piece, int count) {
    std::wstring text;
    for (int i = 0; i < count; ++i)
        text += piece;
    return text;
}

std::string failure(std::wstring const& expression) {
    try {
        compile(expression, {});
        return "accepted";
    } catch (QueryError const& error) {
        return error.what();
    }
}

} // namespace

TEST(Limit, tooManyBracketsAreAnError) {
    constexpr int many = 100000;
    EXPECT_EQ(failure(repeated(L"(", many)), "column 257: nested too deeply");
    EXPECT_EQ(failure(repeated(L"a[", many)), "column 513: nested too deeply");
    EXPECT_EQ(failure(repeated(L"a[not(", many)), "column 769: nested too deeply");
    EXPECT_EQ(failure(L"a[" + repeated(L"string(", many)), "column 1788: nested too deeply");
}

TEST(Limit, deepNestingBelowTheLimitWorks) {
    Tree const tree{"<a><a/></a>"};
    EXPECT_EQ(tree.describe(repeated(L"(", 250) + L"/a" + repeated(L")", 250)), "a");
    EXPECT_EQ(tree.describe(L"/a" + repeated(L"[self::a", 250) + repeated(L"]", 250)), "a");
    std::wstring const long16 = L"[" + repeated(L"../", 16) + repeated(L"a/", 4) + L"a";
    compile(L"/a" + repeated(long16, 250) + repeated(L"]", 250), {});
    EXPECT_EQ(tree.describe(L"/a" + repeated(L"[a/../a/../a/../a/../a/../a/../a/parent::*", 200) +
                            repeated(L"]", 200)),
              "a");
}

TEST(Limit, longChainsOfOperatorsWork) {
    Tree const tree{"<a id='1'/>"};
    constexpr int many = 20000;
    EXPECT_EQ(tree.describe(L"/a[@id='x'" + repeated(L" or @id='1'", many) + L"]"), "a#1");
    EXPECT_EQ(tree.describe(L"/a[@id='1'" + repeated(L" and @id='1'", many) + L"]"), "a#1");
    EXPECT_EQ(tree.describe(L"/a[1" + repeated(L"+1-1", many) + L"]"), "a#1");
    EXPECT_EQ(tree.describe(L"/a[1" + repeated(L"*1", many) + L"]"), "a#1");
    EXPECT_EQ(tree.describe(L"/a[" + repeated(L"-", 2 * many) + L"1]"), "a#1");
    EXPECT_EQ(tree.describe(L"/a" + repeated(L"|/a", many)), "a#1");
    EXPECT_EQ(tree.describe(L"/a" + repeated(L"[1]", many)), "a#1");
    EXPECT_EQ(tree.describe(L"/a[concat(''" + repeated(L",''", many) + L")='']"), "a#1");
    EXPECT_EQ(failure(L"/a[1" + repeated(L"=1", many) + L"]"),
              "column 519: too many comparisons in a row");
}

TEST(Limit, longPathsWork) {
    Tree const tree{"<a><b/></a>"};
    constexpr int many = 100000;
    EXPECT_EQ(tree.describe(repeated(L"./", many) + L"a"), "a");
    EXPECT_EQ(tree.describe(L"/a" + repeated(L"/.", many)), "a");
    EXPECT_EQ(tree.describe(L"/a" + repeated(L"/b/..", many)), "a");
    EXPECT_EQ(tree.describe(L"/a" + repeated(L"/self::*", many)), "a");
    EXPECT_EQ(tree.describe(repeated(L"a/", many) + L"a"), "");
    EXPECT_EQ(tree.describe(repeated(L"//.", 1000) + L"//b"), "b");
    EXPECT_EQ(tree.describe(repeated(L"../", many) + L"a"), "");
}

// Far deeper than what is loaded or made by editing.
TEST(Limit, deepTreesWork) {
    Tree const tree{"<a/>"};
    tree::Document& document = tree.document();
    tree::Node* deepest = tree.element();
    tree::Name* const name = document.names().intern("", "a", "");
    for (int i = 1; i < 50000; ++i) {
        tree::Node* const child = tree::newElement(document, name);
        tree::appendChild(document, deepest, child);
        deepest = child;
    }
    EXPECT_EQ(tree.select(L"//a").size(), 50000U);
    EXPECT_EQ(tree.select(L"//a/a").size(), 49999U);
    EXPECT_EQ(tree.select(L"//a[1]").size(), 50000U);
    EXPECT_EQ(tree.select(L"//a[not(a)]").front(), deepest);
    EXPECT_EQ(tree.select(L"ancestor::a", deepest).size(), 49999U);
    EXPECT_EQ(tree.select(L"//a/ancestor::a").size(), 49999U);
    EXPECT_EQ(tree.select(L"//a/..").size(), 50000U);
    EXPECT_EQ(tree.select(L"//a//a").size(), 49999U);
    EXPECT_EQ(tree.select(L"/a[.='']").size(), 1U);
}

// Each of these would take minutes if it looked at every pair of nodes.
TEST(Limit, longRunsOfSiblingsWork) {
    std::string xml{"<r>"};
    for (int i = 0; i < 50000; ++i)
        xml += "<a/>";
    Tree const tree{xml + "</r>"};
    EXPECT_EQ(tree.select(L"/r/a/following-sibling::a").size(), 49999U);
    EXPECT_EQ(tree.select(L"/r/a/preceding-sibling::a").size(), 49999U);
    EXPECT_EQ(tree.select(L"/r/a/following::a").size(), 49999U);
    EXPECT_EQ(tree.select(L"/r/a/preceding::a").size(), 49999U);
    EXPECT_EQ(tree.select(L"/r/a/..").size(), 1U);
    EXPECT_EQ(tree.select(L"/r/a[preceding-sibling::a]").size(), 49999U);
    EXPECT_EQ(tree.select(L"/r/a[following::a]").size(), 49999U);
    EXPECT_EQ(tree.select(L"/r/a/following-sibling::a[1]").size(), 49999U);
    EXPECT_EQ(tree.select(L"/r/a[position() = last()]").size(), 1U);
}

} // namespace tibxml::query::test
