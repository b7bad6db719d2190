#include "Trees.h"

#include <tree/DocumentWriter.h>

namespace tibxml::tree::test {

class Writing : public Tree {
protected:
    DocumentWriter writer_{document()};
};

TEST_F(Writing, LinksChildrenAndAttributesInTheirOrder) {
    writer_.openElement(name("r"));
    writer_.addAttribute(name("x"), "1");
    writer_.addAttribute(name("y"), "2");
    writer_.addAttribute(name("z"), "3");
    for (char const* const child : {"a", "b", "c"}) {
        writer_.openElement(name(child));
        writer_.addAttribute(name("k"), child);
        writer_.closeElement();
    }
    writer_.closeElement();
    Node const* const root = document().documentElement();
    EXPECT_EQ(listOf(top(), top()->firstChild()), "r");
    EXPECT_EQ(listOf(root, root->firstAttribute()), "xyz");
    EXPECT_EQ(listOf(root, root->firstChild()), "abc");
    for (Node const* child = root->firstChild(); child != nullptr; child = child->next) {
        EXPECT_EQ(listOf(child, child->firstAttribute()), "k");
        EXPECT_EQ(child->firstAttribute()->text(), child->name->local);
        EXPECT_EQ(child->firstChild(), nullptr);
    }
}

TEST_F(Writing, AddsEveryKindOfNode) {
    writer_.add(NodeKind::declaration, name("xml"), "version=\"1.0\"");
    writer_.openElement(name("r"));
    writer_.add(NodeKind::text, nullptr, "a text that does not fit into the node");
    writer_.add(NodeKind::cdata, nullptr, "data");
    writer_.add(NodeKind::comment, nullptr, "");
    writer_.add(NodeKind::processingInstruction, name("p"), "i");
    writer_.closeElement();
    Node const* const declaration = top()->firstChild();
    EXPECT_EQ(declaration->kind, NodeKind::declaration);
    EXPECT_EQ(declaration->text(), "version=\"1.0\"");
    EXPECT_EQ(declaration->next, document().documentElement());
    Node const* node = document().documentElement()->firstChild();
    EXPECT_EQ(node->text(), "a text that does not fit into the node");
    EXPECT_EQ(node->name, nullptr);
    node = node->next;
    EXPECT_EQ(node->kind, NodeKind::cdata);
    node = node->next;
    EXPECT_EQ(node->kind, NodeKind::comment);
    EXPECT_EQ(node->text(), "");
    node = node->next;
    EXPECT_EQ(node->kind, NodeKind::processingInstruction);
    EXPECT_EQ(node->name, name("p"));
    EXPECT_EQ(node->next, nullptr);
}

TEST_F(Writing, KnowsWhereItStands) {
    EXPECT_EQ(writer_.parent(), top());
    EXPECT_EQ(writer_.last(), nullptr);
    EXPECT_EQ(writer_.depth(), 0);
    writer_.openElement(name("r"));
    Node* const root = document().documentElement();
    EXPECT_EQ(writer_.parent(), root);
    EXPECT_EQ(writer_.last(), nullptr);
    writer_.add(NodeKind::text, nullptr, "t");
    EXPECT_EQ(writer_.last(), root->firstChild());
    writer_.openElement(name("c"));
    EXPECT_EQ(writer_.depth(), 2);
    EXPECT_EQ(writer_.last(), nullptr);
    writer_.closeElement();
    EXPECT_EQ(writer_.parent(), root);
    EXPECT_EQ(writer_.last(), root->lastChild());
    writer_.closeElement();
    EXPECT_EQ(writer_.parent(), top());
    EXPECT_EQ(writer_.last(), root);
    EXPECT_EQ(writer_.depth(), 0);
}

TEST_F(Writing, MarksChildrenAsPartOfTheDocumentButNotAttributes) {
    writer_.openElement(name("r"));
    writer_.addAttribute(name("x"), "1");
    writer_.add(NodeKind::text, nullptr, "t");
    Node const* const root = document().documentElement();
    EXPECT_EQ(root->flags, inDocument);
    EXPECT_EQ(root->firstChild()->flags, inDocument);
    EXPECT_EQ(root->firstAttribute()->flags, 0);
}

TEST_F(Writing, ChangesTheVersion) {
    std::uint64_t const before = document().version();
    DocumentWriter const another{document()};
    EXPECT_NE(another.document().version(), before);
}

TEST_F(Writing, MayEndInTheMiddle) {
    writer_.openElement(name("r"));
    writer_.addAttribute(name("x"), "1");
    writer_.openElement(name("c"));
    writer_.add(NodeKind::text, nullptr, "a text that does not fit into the node");
    document().lifetimes().clear();
    EXPECT_EQ(top()->firstChild(), nullptr);
}

} // namespace tibxml::tree::test
