// Predicates, order, unions, filters: what paths select as a whole.
#include <gtest/gtest.h>

#include <tree/Editing.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

constexpr char const* nestedText =
    "<r><a id='1'><a id='2'><b id='3'/><a id='4'><b id='5'/></a><b id='6'/></a><b id='7'/></a>"
    "<a id='8'><c id='9'><b id='10'/></c></a><b id='11'/></r>";

struct Row {
    wchar_t const* expression;
    char const* expected;
};

constexpr Row nestedRows[] = {
    {L"//a/b", "b#3 b#5 b#6 b#7"},
    {L"//a//b", "b#3 b#5 b#6 b#7 b#10"},
    {L"//a/b[1]", "b#3 b#5 b#7"},
    {L"//b[1]", "b#3 b#5 b#7 b#10 b#11"},
    {L"//b[2]", "b#6"},
    {L"//b[last()]", "b#5 b#6 b#7 b#10 b#11"},
    {L"//b[position()=last()]", "b#5 b#6 b#7 b#10 b#11"},
    {L"/descendant::b[1]", "b#3"},
    {L"/descendant::b[last()]", "b#11"},
    {L"(//b)[1]", "b#3"},
    {L"(//b)[last()]", "b#11"},
    {L"(//b)[position()>1 and position()<4]", "b#5 b#6"},
    {L"(//b)[2]/..", "a#4"},
    {L"(//a)[2]//b", "b#3 b#5 b#6"},
    {L"(//a)[position()<3]/b", "b#3 b#6 b#7"},
    {L"//a/@id", "@id=1 @id=2 @id=4 @id=8"},
    {L"//@id[.>9]", "@id=10 @id=11"},
    {L"//a/a/..", "a#1 a#2"},
    {L"//b/..", "r a#1 a#2 a#4 c#9"},
    {L"//b/../..", "/ r a#1 a#2 a#8"},
    {L"//b/ancestor::a", "a#1 a#2 a#4 a#8"},
    {L"//b/ancestor::a[1]", "a#1 a#2 a#4 a#8"},
    {L"//b/ancestor::*[last()]", "r"},
    {L"//a/following-sibling::b", "b#6 b#7 b#11"},
    {L"//a/following-sibling::*[1]", "b#6 b#7 a#8 b#11"},
    {L"//b/preceding-sibling::*", "a#1 a#2 b#3 a#4 a#8"},
    {L"//b/preceding-sibling::*[1]", "a#2 a#4 a#8"},
    {L"//a/following::b", "b#6 b#7 b#10 b#11"},
    {L"//a/preceding::b", "b#3 b#5 b#6 b#7"},
    {L"//b | //a", "a#1 a#2 b#3 a#4 b#5 b#6 b#7 a#8 b#10 b#11"},
    {L"//b[1] | //b | //a/b", "b#3 b#5 b#6 b#7 b#10 b#11"},
    {L"(//a | //c)/b", "b#3 b#5 b#6 b#7 b#10"},
    {L"//a | /", "/ a#1 a#2 a#4 a#8"},
    {L"//c/@id | //c", "c#9 @id=9"},
    {L"zz | //c", "c#9"},
    {L"zz | yy", ""},
    {L"//a[b]", "a#1 a#2 a#4"},
    {L"//a[b][2]", ""},
    {L"//a[b][1]", "a#1 a#2 a#4"},
    {L"/r/a[2][c]", "a#8"},
    {L"/r/a[c][1]", "a#8"},
    {L"/r/a[c][2]", ""},
    {L"/r/*[last()]", "b#11"},
    {L"/r/*[last()-1]", "a#8"},
    {L"/r/*[last()][self::b]", "b#11"},
    {L"/r/*[last()][2]", ""},
    {L"/r/*[position() mod 2 = 1]", "a#1 b#11"},
    {L"/r/*[0]", ""},
    {L"/r/*[1.5]", ""},
    {L"/r/*[-1]", ""},
    {L"/r/*[number('x')]", ""},
    {L"/r/*['x']", "a#1 a#8 b#11"},
    {L"/r/*['']", ""},
    {L"/r/*[count(//b) - 4]", "a#8"},
    {L"/r/*[@id=8]", "a#8"},
    {L"/r/*[@id='8']", "a#8"},
    {L"/r/*['8'=@id]", "a#8"},
    {L"/r/*[@id!='8']", "a#1 b#11"},
    {L"/r/*[not(@id='8')]", "a#1 b#11"},
    {L"/r/*[@id='8' or @id='1']", "a#1 a#8"},
    {L"/r/*[@id='8' and c]", "a#8"},
    {L"/r/*[position()=2]", "a#8"},
    {L"/r/*[2=position()]", "a#8"},
    {L"/r/*[position()!=2]", "a#1 b#11"},
    {L"/r/*[last()=position()]", "b#11"},
    {L"/r/*[position()=1.5]", ""},
    {L"/r/*[position()=2 or @id='11']", "a#8 b#11"},
    {L"/r/*[position()=last() or @id='1']", "a#1 b#11"},
    {L"/r/*[not(position()=last())]", "a#1 a#8"},
    {L"/r/*[(position()=2)=(@id='8')]", "a#1 a#8 b#11"},
    {L"/r/*[(position()=2)=2]", "a#8"},
    {L"/r/*[(@id='8')=(position()=3)]", "a#1"},
    {L"//c/b/../../@id", "@id=8"},
    {L"//a[.//b[@id='5']]", "a#1 a#2 a#4"},
    {L"//a[ancestor::a]", "a#2 a#4"},
    {L"//a[count(ancestor::a) = 2]", "a#4"},
    {L"//b[../@id = 4]", "b#5"},
    {L"//a[@id = //b/@id - 1]", "a#2"},
    {L"//*[@id = //b/../@id]", "a#1 a#2 a#4 c#9"},
    {L"//*[b[2]]", "a#2"},
    {L".//.", "/ r a#1 a#2 b#3 a#4 b#5 b#6 b#7 a#8 c#9 b#10 b#11"},
    {L"//a/self::a[@id>2]/b", "b#5"},
    {L"//a//a//b", "b#3 b#5 b#6"},
    {L"//a/descendant::a[1]", "a#2 a#4"},
    {L"//a/descendant-or-self::a", "a#1 a#2 a#4 a#8"},
    {L"//a//b[1]", "b#3 b#5 b#7 b#10"},
    {L"id('1')", ""},
    {L"id('1')/a", ""},
    {L"id('1') | /r", "r"},
};

} // namespace

TEST(Path, selectsInDocumentOrderEachOnce) {
    Tree const tree{nestedText};
    for (Row const& row : nestedRows)
        EXPECT_EQ(tree.describe(row.expression), row.expected) << narrow(row.expression);
}

TEST(Path, startsAtTheTopOfADetachedSubtree) {
    Tree const tree{"<r><a id='1'><b/></a><a id='2'/></r>"};
    tree::Node* const a = tree.find(L"/r/a[1]");
    tree::Node* const b = tree.find(L"//b");
    tree::unlink(tree.document(), a);
    EXPECT_EQ(tree.describe(L"/", b), "a#1");
    EXPECT_EQ(tree.describe(L"/b", b), "b");
    EXPECT_EQ(tree.describe(L"/a", b), "");
    EXPECT_EQ(tree.describe(L"//*", b), "b");
    EXPECT_EQ(tree.describe(L"/descendant-or-self::*", b), "a#1 b");
    EXPECT_EQ(tree.describe(L"/@id", b), "@id=1");
    EXPECT_EQ(tree.describe(L"ancestor::node()", b), "a#1");
    EXPECT_EQ(tree.describe(L"..", a), "");
    EXPECT_EQ(tree.describe(L"following::node() | preceding::node()", a), "");
    EXPECT_EQ(tree.describe(L"//a"), "a#2");
    tree::appendChild(tree.document(), tree.element(), a);
}

TEST(Path, worksFromADetachedAttribute) {
    Tree const tree{"<r k='v'><a/></r>"};
    tree::Node* const k = tree.find(L"/r/@k");
    tree::unlink(tree.document(), k);
    EXPECT_EQ(tree.describe(L"/", k), "@k=v");
    EXPECT_EQ(tree.describe(L".", k), "@k=v");
    EXPECT_EQ(tree.describe(L"..", k), "");
    EXPECT_EQ(tree.describe(L"following::node() | preceding::node()", k), "");
    EXPECT_EQ(tree.describe(L"//node()", k), "");
    tree::appendAttribute(tree.document(), tree.element(), k);
}

TEST(Path, followsEditsBetweenSearches) {
    Tree const tree{"<r><a id='1'/></r>"};
    auto const query = compile(L"//b | //a", {});
    EXPECT_EQ(selectFirst(*query, tree.document(), tree.node()), tree.find(L"/r/a"));
    tree::Document& document = tree.document();
    tree::Node* const b = tree::newElement(document, document.names().intern("", "b", ""));
    tree::insertBefore(document, tree.element(), b, tree.find(L"/r/a"));
    EXPECT_EQ(selectFirst(*query, document, tree.node()), b);
    std::vector<tree::Node*> nodes;
    selectAll(*query, document, tree.node(), nodes);
    EXPECT_EQ(describe(nodes), "b a#1");
}

TEST(Path, oneQueryServesManyDocuments) {
    auto const query = compile(L"//b[@id='2']", {});
    for (int i = 0; i < 3; ++i) {
        Tree const tree{"<r><b id='1'/><b id='2'/></r>"};
        Tree const without{"<r><c/></r>"};
        EXPECT_EQ(selectFirst(*query, tree.document(), tree.node()), tree.find(L"/r/b[2]"));
        EXPECT_EQ(selectFirst(*query, without.document(), without.node()), nullptr);
    }
}

TEST(Path, appendsToWhatIsThere) {
    Tree const tree{"<r><a/></r>"};
    std::vector<tree::Node*> nodes{tree.node()};
    selectAll(*compile(L"/r/a", {}), tree.document(), tree.node(), nodes);
    EXPECT_EQ(describe(nodes), "/ a");
}

} // namespace tibxml::query::test
