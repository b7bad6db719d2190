#include <gtest/gtest.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

constexpr char const* family =
    "<?xml version='1.0'?><!--before--><r id='r'>"
    "<a id='1'><b id='2'>x</b>y<b id='3'/></a>"
    "<a id='4' k='v'><c id='5'><b id='6'><![CDATA[z]]></b></c><?t d?></a>"
    "<!--inside--></r><?t end?>";

struct Row {
    wchar_t const* from;
    wchar_t const* expression;
    char const* expected;
};

constexpr Row rows[] = {
    {L"/", L"child::node()", "<!--before--> r#r <?t end?>"},
    {L"/", L"node()[1]", "<!--before-->"},
    {L"/", L"*", "r#r"},
    {L"/", L".", "/"},
    {L"/", L"..", ""},
    {L"/", L"/", "/"},
    {L"/r/a[1]", L"/", "/"},
    {L"/", L"ancestor-or-self::node()", "/"},
    {L"/", L"following::node()", ""},
    {L"/", L"preceding::node()", ""},
    {L"/", L"descendant::b", "b#2 b#3 b#6"},
    {L"/", L"descendant-or-self::node()[self::comment()]", "<!--before--> <!--inside-->"},
    {L"//a[@id='1']", L"child::node()", "b#2 'y' b#3"},
    {L"//a[@id='1']", L"self::a", "a#1"},
    {L"//a[@id='1']", L"self::b", ""},
    {L"//a[@id='1']", L"parent::r", "r#r"},
    {L"//a[@id='1']", L"parent::a", ""},
    {L"//a[@id='1']", L"following-sibling::node()", "a#4 <!--inside-->"},
    {L"//a[@id='1']", L"preceding-sibling::node()", ""},
    {L"//a[@id='4']", L"preceding-sibling::*", "a#1"},
    {L"//a[@id='4']", L"@*", "@id=4 @k=v"},
    {L"//a[@id='4']", L"attribute::k", "@k=v"},
    {L"//a[@id='4']", L"@node()", "@id=4 @k=v"},
    {L"//a[@id='4']", L"@text()", ""},
    {L"//a[@id='4']", L"namespace::*", "xml=http://www.w3.org/XML/1998/namespace"},
    {L"//a[@id='4']", L"namespace::node()", "xml=http://www.w3.org/XML/1998/namespace"},
    {L"//b[@id='2']/text()", L"namespace::*", ""},
    {L"//b[@id='6']", L"ancestor::*", "r#r a#4 c#5"},
    {L"//b[@id='6']", L"ancestor::node()", "/ r#r a#4 c#5"},
    {L"//b[@id='6']", L"ancestor-or-self::*", "r#r a#4 c#5 b#6"},
    {L"//b[@id='6']", L"ancestor::*[1]", "c#5"},
    {L"//b[@id='6']", L"ancestor::*[last()]", "r#r"},
    {L"//b[@id='6']", L"ancestor::*[2]", "a#4"},
    {L"//b[@id='6']", L"preceding::*", "a#1 b#2 b#3"},
    {L"//b[@id='6']", L"preceding::*[1]", "b#3"},
    {L"//b[@id='6']", L"preceding::node()", "<!--before--> a#1 b#2 'x' 'y' b#3"},
    {L"//b[@id='6']", L"following::node()", "<?t d?> <!--inside--> <?t end?>"},
    {L"//b[@id='2']", L"following::*", "b#3 a#4 c#5 b#6"},
    {L"//b[@id='2']", L"following::b[2]", "b#6"},
    {L"//b[@id='3']", L"preceding-sibling::node()", "b#2 'y'"},
    {L"//b[@id='3']", L"preceding-sibling::node()[1]", "'y'"},
    {L"//b[@id='3']", L"preceding-sibling::node()[last()]", "b#2"},
    {L"//@k", L"..", "a#4"},
    {L"//@k", L"self::node()", "@k=v"},
    {L"//@k", L"self::*", ""},
    {L"//@k", L"ancestor::*", "r#r a#4"},
    {L"//@k", L"descendant-or-self::node()", "@k=v"},
    {L"//@k", L"child::node()", ""},
    {L"//@k", L"following-sibling::node()", ""},
    {L"//@k", L"preceding-sibling::node()", ""},
    {L"//@k", L"following::*", "c#5 b#6"},
    {L"//@k", L"following::node()[last()]", "<?t end?>"},
    {L"//@k", L"preceding::*", "a#1 b#2 b#3"},
    {L"//@k", L"@*", ""},
    {L"//text()[.='y']", L"following-sibling::b", "b#3"},
    {L"//text()[.='y']", L"child::node()", ""},
    {L"//text()[.='y']", L"..", "a#1"},
    {L"/r/comment()", L"preceding-sibling::a[1]", "a#4"},
    {L"/r/comment()", L"preceding::processing-instruction('t')", "<?t d?>"},
    {L"/", L"//processing-instruction()", "<?t d?> <?t end?>"},
    {L"/", L"//processing-instruction('x')", ""},
    {L"/", L"//text()", "'x' 'y' [z]"},
    {L"/", L"//comment()", "<!--before--> <!--inside-->"},
};

} // namespace

TEST(Axes, selectInDocumentOrder) {
    Tree const tree{family};
    for (Row const& row : rows) {
        EXPECT_EQ(tree.describe(row.expression, tree.find(row.from)), row.expected)
            << narrow(row.expression) << " from " << narrow(row.from);
    }
}

TEST(Axes, theDeclarationIsNoNode) {
    Tree const tree{"<?xml version='1.0' encoding='UTF-8'?><r/>"};
    EXPECT_EQ(tree.describe(L"/node()"), "r");
    EXPECT_EQ(tree.describe(L"//node()"), "r");
    EXPECT_EQ(tree.describe(L"/processing-instruction()"), "");
    EXPECT_EQ(tree.describe(L"/r/preceding-sibling::node()"), "");
    EXPECT_EQ(tree.describe(L"/r/preceding::node()"), "");
    EXPECT_EQ(tree.describe(L"/node()[1]"), "r");
}

TEST(Axes, namespaceDeclarationsAreNoAttributes) {
    Tree const tree{"<r xmlns='urn:d' xmlns:p='urn:p' p:k='1' k='2'/>"};
    EXPECT_EQ(tree.describe(L"/*/@*"), "@p:k=1 @k=2");
    EXPECT_EQ(tree.describe(L"/*/@node()"), "@p:k=1 @k=2");
    EXPECT_EQ(tree.describe(L"/*/@*[1]"), "@p:k=1");
    EXPECT_EQ(tree.describe(L"/*/@xmlns"), "");
    EXPECT_EQ(tree.describe(L"/*[@xmlns]"), "");
    EXPECT_EQ(tree.describe(L"/*[@xmlns='urn:d']"), "");
}

TEST(Axes, textAndCdataStaySeparate) {
    Tree const tree{"<r>a<![CDATA[b]]>c<!--x-->d</r>"};
    EXPECT_EQ(tree.describe(L"/r/text()"), "'a' [b] 'c' 'd'");
    EXPECT_EQ(tree.describe(L"/r/text()[2]"), "[b]");
    EXPECT_EQ(tree.describe(L"/r/text()[last()]"), "'d'");
    EXPECT_EQ(tree.describe(L"/r[.='abcd']"), "r");
    EXPECT_EQ(tree.describe(L"/self::node()[.='abcd']"), "/");
    EXPECT_EQ(tree.describe(L"/r[text()='b']"), "r");
}

} // namespace tibxml::query::test
