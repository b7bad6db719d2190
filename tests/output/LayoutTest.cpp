// White space between markup: written where it was dropped, protected where it would be.
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;

namespace {

struct Row {
    char const* source;
    char const* written;
};

void expectRows(std::span<Row const> rows, WhiteSpace whiteSpace) {
    for (auto const& [source, written] : rows) {
        std::string const text = xml(parse(source, whiteSpace));
        EXPECT_EQ(text, written) << source;
        EXPECT_EQ(xml(parse(text, whiteSpace)), written) << "written again";
    }
}

TEST(Layout, FollowsTheSource) {
    Row const rows[] = {
        {"<a><b/><c/></a>", "<a><b/><c/></a>\n"},
        {"<a>\n\t<b/>\n\t<c/>\n</a>", "<a>\n\t<b/>\n\t<c/>\n</a>\n"},
        {"<a>  <b/>   <c/> </a>", "<a>\n\t<b/>\n\t<c/>\n</a>\n"},
        {"<a>\n\n\n<b/></a>", "<a>\n\t<b/></a>\n"},
        {"<a><b/>\n</a>", "<a><b/>\n</a>\n"},
        {"<a><b/>\n<c/></a>", "<a><b/>\n\t<c/></a>\n"},
        {"<a>\n</a>", "<a>\n</a>\n"},
        {"<a><b>\n</b></a>", "<a><b>\n\t</b></a>\n"},
        {"<a>\n <b>\n  <c>\n   <d/>\n  </c>\n </b>\n</a>",
         "<a>\n\t<b>\n\t\t<c>\n\t\t\t<d/>\n\t\t</c>\n\t</b>\n</a>\n"},
        {"<a>\n<!--c-->\n<?p?>\n<![CDATA[x]]>\n<b/>\n</a>",
         "<a>\n\t<!--c-->\n\t<?p?>\n\t<![CDATA[x]]>\n\t<b/>\n</a>\n"},
        {"<a>text\n<b/>\n</a>", "<a>text\n<b/>\n</a>\n"},
        {"<a>\n<b/>\ntext</a>", "<a>\n\t<b/>\ntext</a>\n"},
        {"<!--x--><a/><!--y-->", "<!--x-->\n<a/>\n<!--y-->\n"},
        {"<?xml version=\"1.0\"?><a/>", "<?xml version=\"1.0\"?>\n<a/>\n"},
    };
    expectRows(rows, WhiteSpace::dropped);
}

TEST(Layout, KeepsAllOfItWhenPreserved) {
    Row const rows[] = {
        {"<a>\n <b/>\n</a>", "<a>\n <b/>\n</a>"},
        {"<a> </a>", "<a> </a>"},
        {"<a>&#32;</a>", "<a> </a>"},
        {"<a>&#13;\n</a>", "<a>&#13;\n</a>"},
        {"<?xml version=\"1.0\"?><!--x--><a/>", "<?xml version=\"1.0\"?><!--x--><a/>"},
        {"<a xml:space=\"default\"> </a>", "<a xml:space=\"default\"> </a>"},
    };
    expectRows(rows, WhiteSpace::preserved);
}

TEST(Layout, ObeysXmlSpace) {
    Row const rows[] = {
        {"<a xml:space=\"preserve\"> <b/> </a>", "<a xml:space=\"preserve\"> <b/> </a>\n"},
        {"<a xml:space=\"preserve\"><b xml:space=\"default\">\n<c/>\n</b> </a>",
         "<a xml:space=\"preserve\"><b xml:space=\"default\">\n\t\t<c/>\n\t</b> </a>\n"},
        {"<a>\n<b xml:space=\"preserve\"> </b>\n<c>\n</c>\n</a>",
         "<a>\n\t<b xml:space=\"preserve\"> </b>\n\t<c>\n\t</c>\n</a>\n"},
        {"<a xml:space=\"preserve\"><b xml:space=\"other\"> </b></a>",
         "<a xml:space=\"preserve\"><b xml:space=\"other\"> </b></a>\n"},
        {"<a xml:space=\"other\"> <b/></a>", "<a xml:space=\"other\">\n\t<b/></a>\n"},
        {"<a><b xml:space=\"preserve\"/> <c/></a>", "<a><b xml:space=\"preserve\"/>\n\t<c/></a>\n"},
        {"<a xml:space=\"preserve\">&#32;</a>", "<a xml:space=\"preserve\"> </a>\n"},
    };
    expectRows(rows, WhiteSpace::dropped);
}

TEST(Layout, ProtectsBlankTexts) {
    Row const rows[] = {
        {"<a>&#32;</a>", "<a>&#32;</a>\n"},
        {"<a> &#32; </a>", "<a>&#32;  </a>\n"},
        {"<a>&#9;</a>", "<a>&#9;</a>\n"},
        {"<a>&#10;</a>", "<a>&#10;</a>\n"},
        {"<a>&#13;</a>", "<a>&#13;</a>\n"},
        {"<a><b/>&#10;&#10;<b/></a>", "<a><b/>&#10;\n<b/></a>\n"},
        {"<a> x </a>", "<a> x </a>\n"},
        {"<a><![CDATA[ ]]></a>", "<a><![CDATA[ ]]></a>\n"},
        {"<a><![CDATA[ ]]>&#32;</a>", "<a><![CDATA[ ]]>&#32;</a>\n"},
        {"<a>\n<b/>&#32;</a>", "<a>\n\t<b/>&#32;</a>\n"},
    };
    expectRows(rows, WhiteSpace::dropped);
}

// A run of adjacent texts is one text for its reader.
TEST(Layout, LooksAtRunsOfTexts) {
    struct Run {
        std::vector<char const*> texts;
        char const* written;
    };

    Run const runs[] = {
        {{" ", " "}, "<r>&#32; </r>\n"},
        {{" ", "x"}, "<r> x</r>\n"},
        {{"x", " "}, "<r>x </r>\n"},
        {{"", " "}, "<r>&#32;</r>\n"},
        {{" ", "", "\n", ""}, "<r>&#32;\n</r>\n"},
        {{" ", "", "x"}, "<r> x</r>\n"},
        {{"x", "", " "}, "<r>x </r>\n"},
        {{" ", "\r"}, "<r>&#32;&#13;</r>\n"},
        {{"", ""}, "<r/>\n"},
    };
    for (auto const& [texts, written] : runs) {
        Builder b;
        Node* const root = b.element(b.top(), "r");
        for (char const* text : texts)
            b.text(root, text);
        EXPECT_EQ(xml(b.document()), written);
        EXPECT_EQ(outline(*parse(written)->node()), outline(*b.top()));
    }
}

// Marks travel with nodes into places where a line end would be read as text.
TEST(Layout, NeverTouchesTexts) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    root->flags = tree::breakInside;
    b.text(root, "x");
    Node* const marked = b.element(root, "m");
    marked->flags = tree::breakAfter;
    Node* const text = b.text(root, "y");
    text->flags = tree::breakAfter;
    b.element(root, "n")->flags = tree::breakAfter | tree::breakInside;
    EXPECT_EQ(xml(b.document()), "<r>x<m/>y<n>\n\t</n>\n</r>\n");
}

TEST(Layout, IgnoresMarksWhereWhiteSpaceCounts) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    b.attribute(root, "xml:space", "preserve", tree::xmlNamespace);
    root->flags = tree::breakInside;
    b.element(root, "m")->flags = tree::breakAfter | tree::breakInside;
    EXPECT_EQ(xml(b.document()), "<r xml:space=\"preserve\"><m/></r>\n");

    Builder kept{WhiteSpace::preserved};
    Node* const top = kept.element(kept.top(), "r");
    top->flags = tree::breakInside | tree::breakAfter;
    EXPECT_EQ(xml(kept.document()), "<r/>");
}

TEST(Layout, EmptyTextsCarryNoMarks) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    root->flags = tree::breakInside;
    b.text(root, "")->flags = tree::breakAfter;
    EXPECT_EQ(xml(b.document()), "<r>\n</r>\n");
    b.element(root, "e")->flags = tree::breakAfter;
    b.text(root, "")->flags = tree::breakAfter;
    b.text(root, "x");
    EXPECT_EQ(xml(b.document()), "<r>\n\t<e/>x</r>\n");
}

TEST(Layout, CountsDepthFromTheNodeWritten) {
    auto const document = parse("<a>\n<b>\n<c/>\n</b>\n</a>");
    EXPECT_EQ(xml(document, document->documentElement()->firstChild()), "<b>\n\t<c/>\n</b>");
}

TEST(Layout, IndentsDeepElements) {
    std::string source;
    std::string expected;
    for (std::size_t depth = 0; depth < 40; ++depth) {
        source += "<e>\n";
        expected += std::string(depth, '\t') + "<e>\n";
    }
    expected.insert(expected.size() - 1, "\n" + std::string(39, '\t') + "</e>");
    for (std::size_t depth = 40; depth-- > 0;)
        source += "</e>\n";
    for (std::size_t depth = 39; depth-- > 0;)
        expected += std::string(depth, '\t') + "</e>\n";
    EXPECT_EQ(xml(parse(source)), expected);
}

} // namespace

} // namespace tibxml::output::test
