// The text of every kind of node.
#include <string>

#include <gtest/gtest.h>

#include <tree/Navigation.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;
using tree::NodeKind;

namespace {

TEST(Node, EmptyDocumentIsEmptyText) {
    EXPECT_EQ(xml(Builder{}.document()), "");
    EXPECT_EQ(file(Builder{}.document()), "");
    EXPECT_EQ(xml(Builder{WhiteSpace::preserved}.document()), "");
}

TEST(Node, DocumentsAreReadAndWrittenUnchanged) {
    char const* const documents[] = {
        "<e/>\n",
        "<e></e>\n",
        "<e a=\"1\" b=\"\"/>\n",
        "<e>text</e>\n",
        "<e>one<b/>two<b>three</b></e>\n",
        "<e><![CDATA[a < b & c]]></e>\n",
        "<e><![CDATA[a]]><![CDATA[b]]>c<![CDATA[]]></e>\n",
        "<e><!-- comment --><?target some data?><?target?></e>\n",
        "<?xml version=\"1.0\"?>\n<!-- before -->\n<?pi x?>\n<e/>\n<!-- after -->\n",
        "<?xml version=\"1.0\" standalone=\"yes\"?>\n<e/>\n",
        "<p:e xmlns:p=\"u\" p:a=\"1\"><p:f/></p:e>\n",
        "<e b=\"1\" xmlns=\"u\" a=\"2\"/>\n",
        "<\xC3\xA9l \xD0\xB0=\"\xE2\x82\xAC\">\xF0\x9F\x98\x80</\xC3\xA9l>\n",
    };
    for (std::string const text : documents) {
        std::string const expected = text == "<e></e>\n" ? "<e/>\n" : text;
        EXPECT_EQ(xml(parse(text)), expected);
        EXPECT_EQ(file(parse(text)), expected);
    }
}

TEST(Node, EachKindByItself) {
    Builder b;
    Node* const root = b.element(b.top(), "root");
    Node* const attribute = b.attribute(root, "a", "<\"&\n>");
    Node* const text = b.text(root, "a < b & \"c\"\r");
    Node* const blank = b.text(root, "  ");
    Node* const cdata = b.data(root, NodeKind::cdata, "<&]]>");
    Node* const comment = b.data(root, NodeKind::comment, " <&> ");
    Node* const instruction = b.instruction(root, "go", "<&>");
    Node* const bare = b.instruction(root, "go", "");
    auto const& document = b.document();
    EXPECT_EQ(xml(document, attribute), "a=\"&lt;&quot;&amp;&#10;&gt;\"");
    EXPECT_EQ(xml(document, text), "a &lt; b &amp; \"c\"&#13;");
    EXPECT_EQ(xml(document, blank), "  ");
    EXPECT_EQ(xml(document, cdata), "<![CDATA[<&]]]]><![CDATA[>]]>");
    EXPECT_EQ(xml(document, comment), "<!-- <&> -->");
    EXPECT_EQ(xml(document, instruction), "<?go <&>?>");
    EXPECT_EQ(xml(document, bare), "<?go?>");
}

TEST(Node, DeclarationByItselfKeepsItsEncoding) {
    auto const document = parse("<?xml version=\"1.0\" encoding=\"UTF-8\"?><e/>");
    EXPECT_EQ(xml(document, document->node()->firstChild()),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
}

TEST(Node, ElementEndsWithItsEndTag) {
    auto const document = parse("<a>\n\t<b>\n\t\t<c/>\n\t</b>\n\t<d/>\n</a>\n");
    Node const* const b = document->documentElement()->firstChild();
    EXPECT_EQ(xml(document, b), "<b>\n\t<c/>\n</b>");
    EXPECT_EQ(xml(document, b->firstChild()), "<c/>");
    EXPECT_EQ(xml(document, document->documentElement()),
              "<a>\n\t<b>\n\t\t<c/>\n\t</b>\n\t<d/>\n</a>");
}

TEST(Node, DetachedSubtree) {
    auto const document = parse("<a><b x=\"1\"><c/></b></a>");
    Node* const b = document->documentElement()->firstChild();
    tree::unlink(*document, b);
    EXPECT_EQ(xml(document, b), "<b x=\"1\"><c/></b>");
    EXPECT_EQ(xml(document), "<a/>\n");
    tree::appendChild(*document, document->documentElement(), b);
}

TEST(Node, EmptyTextLeavesNoTrace) {
    Builder b;
    Node* const root = b.element(b.top(), "root");
    b.text(root, "");
    EXPECT_EQ(xml(b.document()), "<root/>\n");
    b.text(root, "x");
    b.text(root, "");
    EXPECT_EQ(xml(b.document()), "<root>x</root>\n");
}

// What the engine refuses to create must not break a document when it exists all the same.
TEST(Node, CommentsAndInstructionsNeverEndEarly) {
    struct Row {
        char const* data;
        char const* comment;
        char const* instruction;
    };

    Row const rows[] = {
        {"a--b", "<!--a- -b-->", "<?t a--b?>"},
        {"---", "<!--- - - -->", "<?t ---?>"},
        {"-", "<!--- -->", "<?t -?>"},
        {"a-->b", "<!--a- ->b-->", "<?t a-->b?>"},
        {"a?>b", "<!--a?>b-->", "<?t a? >b?>"},
        {"?", "<!--?-->", "<?t ?\?>"},
        {"a ?>?>", "<!--a ?>?>-->", "<?t a ? >? >?>"},
    };
    for (auto const& [data, comment, instruction] : rows) {
        Builder b;
        Node* const root = b.element(b.top(), "root");
        EXPECT_EQ(xml(b.document(), b.data(root, NodeKind::comment, data)), comment);
        EXPECT_EQ(xml(b.document(), b.instruction(root, "t", data)), instruction);
        parse(xml(b.document()));
    }
}

TEST(Node, DepthCostsNoStack) {
    constexpr std::size_t depth = 300'000;
    Builder b;
    Node* parent = b.top();
    for (std::size_t i = 0; i < depth; ++i)
        parent = b.element(parent, "e");
    std::string const text = xml(b.document());
    EXPECT_EQ(text.size(), depth * 7 - 3 + 1); // <e> and </e>, the innermost <e/>, a line end
    EXPECT_EQ(text.substr(text.size() - 9), "</e></e>\n");
}

} // namespace

} // namespace tibxml::output::test
