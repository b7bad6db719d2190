// The text of a subtree, with a blank where lines break between words.
#include <string>

#include <gtest/gtest.h>

#include <output/ReadableText.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;

namespace {

std::string textOf(tree::DocumentRef const& document, Node const* node) {
    std::string storage;
    return std::string{readableText(*document, node, storage)};
}

std::string textOf(tree::DocumentRef const& document) {
    return textOf(document, document->node());
}

struct Row {
    char const* source;
    char const* text;
};

constexpr Row rows[] = {
    {"<a/>", ""},
    {"<a>\n</a>", ""},
    {"<a>x</a>", "x"},
    {"<a><b>x</b><c>y</c></a>", "xy"},
    {"<a><b>Hello</b>\n<i>world</i></a>", "Hello world"},
    {"<a>\n<b>x</b>\n<c>y</c>\n</a>", "x y"},
    {"<a>\n\t<b>\n\t\t<c>x</c>\n\t</b>\n\t<b>\n\t\t<c>y</c>\n\t</b>\n</a>", "x y"},
    {"<a><b><c>x</c>\n</b><d>y</d></a>", "x y"},
    {"<a><b>x</b><c>\n<d>y</d></c></a>", "x y"},
    {"<a><b>x</b>\n<c/>\n<c>\n</c>\n<d>y</d></a>", "x y"},
    {"<a><b>x</b>\n<!--c-->\n<?p?><d>y</d></a>", "x y"},
    {"<a><b>x</b><!--c-->\n<d>y</d></a>", "x y"},
    {"<a>\n<![CDATA[x]]>\n<![CDATA[y]]>\n</a>", "x y"},
    {"<a><![CDATA[]]>\n<b>x</b>\n<![CDATA[]]></a>", "x"},
    {"<a><b>x </b>\n<c> y</c></a>", "x   y"},
    {"<a>x<b/>\n<c/>y</a>", "x y"},
    {"<a>x\n<b>y</b>\n z</a>", "x\ny\n z"},
    {"<a>\n<b> x</b>\n<c>y </c>\n</a>", " x y "},
    {"<a xml:space='preserve'>\n<b>x</b>\n<c>y</c></a>", "\nx\ny"},
    {"<a xml:space='preserve'><b xml:space='default'><c>x</c>\n<c>y</c></b>\n</a>", "x y\n"},
};

TEST(ReadableText, HasABlankWhereLinesBreakBetweenTwoPieces) {
    for (auto const& [source, text] : rows) {
        auto const document = parse(source);
        EXPECT_EQ(textOf(document), text) << source;
        EXPECT_EQ(textOf(document, document->documentElement()), text) << source;
    }
}

TEST(ReadableText, IsTheSameAfterSaving) {
    for (Row const& row : rows)
        EXPECT_EQ(textOf(parse(xml(parse(row.source)))), row.text) << row.source;
}

TEST(ReadableText, OfOtherNodesIsTheirOwn) {
    auto const document = parse("<a b=' v '><!-- c --><?p d ?> t </a>");
    Node const* const a = document->documentElement();
    EXPECT_EQ(textOf(document, a->firstAttribute()), " v ");
    EXPECT_EQ(textOf(document, a->firstChild()), " c ");
    EXPECT_EQ(textOf(document, a->firstChild()->next), "d ");
    EXPECT_EQ(textOf(document, a->lastChild()), " t ");
}

TEST(ReadableText, CountsOnlyWhatIsInside) {
    auto const document = parse("<a>\n<b>x<c>y</c></b>\n<b>z</b></a>");
    EXPECT_EQ(textOf(document, document->documentElement()->firstChild()), "xy");
}

// Marks beside a text, within what keeps its blanks, or of a document that keeps all.
TEST(ReadableText, PassesOverMarksThatAreNotWritten) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    Node* const first = b.element(root, "e");
    first->flags |= tree::breakAfter;
    b.text(first, "x");
    b.text(root, "");
    b.text(root, "y");
    EXPECT_EQ(textOf(b.document()), "xy");
    EXPECT_EQ(textOf(parse(xml(b.document()))), "xy");
    tree::setText(*b.document(), root->lastChild(), "");
    b.text(b.element(root, "e"), "z");
    EXPECT_EQ(textOf(b.document()), "x z") << "empty texts leave no trace";
    EXPECT_EQ(textOf(parse(xml(b.document()))), "x z");
    b.attribute(root, "xml:space", "preserve", tree::xmlNamespace);
    EXPECT_EQ(textOf(b.document()), "xz");
    EXPECT_EQ(textOf(parse(xml(b.document()))), "xz");

    auto const kept = parse("<a><b>x</b>\n<c>y</c></a>");
    kept->setPreservesWhiteSpace(true);
    EXPECT_EQ(textOf(kept), "xy");
}

} // namespace

} // namespace tibxml::output::test
