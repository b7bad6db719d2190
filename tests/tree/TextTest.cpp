#include "Trees.h"

#include <tree/Text.h>

namespace tibxml::tree::test {

using Texts = Tree;

std::size_t const borders[] = {0,  1,  2,  3,  4,  5,  7,  8,    9,     11,
                               15, 16, 17, 23, 24, 25, 64, 1000, 65536, 65537};

std::string textOf(std::size_t length) {
    std::string text(length, 'x');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char>('a' + i % 26);
    return text;
}

TEST_F(Texts, AreKeptExactlyAtEveryBorder) {
    for (std::size_t const length : borders) {
        Node* const node = text(nullptr, textOf(length));
        EXPECT_EQ(node->text(), textOf(length));
        EXPECT_EQ(node->inlineLength == Node::outOfLine, length > Node::inlineCapacity) << length;
        Node* const once = document().arena().newNode(NodeKind::comment);
        setTextOnce(document(), once, textOf(length));
        EXPECT_EQ(once->text(), textOf(length));
    }
}

TEST_F(Texts, ChangeFromEveryLengthToEveryOther) {
    for (std::size_t const from : borders) {
        for (std::size_t const to : borders) {
            Node* const node = text(nullptr, textOf(from));
            setText(document(), node, textOf(to));
            EXPECT_EQ(node->text(), textOf(to)) << from << " to " << to;
        }
    }
}

TEST_F(Texts, CanBePartsOfThemselves) {
    for (std::size_t const length : borders) {
        std::string const all = textOf(length);
        for (std::size_t const start : {std::size_t{0}, length / 3, length / 2, length}) {
            Node* const node = text(nullptr, all);
            setText(document(), node, node->text().substr(start));
            EXPECT_EQ(node->text(), all.substr(start)) << length << " from " << start;
        }
    }
}

TEST_F(Texts, MayBeNoTextAtAll) {
    Node* const node = text(nullptr, std::string_view{});
    setText(document(), node, std::string_view{});
    EXPECT_EQ(node->text(), "");
}

TEST_F(Texts, BelongToNoParent) {
    EXPECT_EQ(top()->text(), "");
    EXPECT_EQ(element(top(), "e")->text(), "");
}

TEST_F(Texts, OfNamedNodesComeWithTheirNames) {
    Node const* const node = newProcessingInstruction(document(), name("target"), "data");
    EXPECT_EQ(node->name->qualified, "target");
    EXPECT_EQ(node->text(), "data");
    EXPECT_EQ(attribute(nullptr, name("a"), "value")->text(), "value");
}

using StringValues = Tree;

TEST_F(StringValues, JoinTextAndCdataOfDescendants) {
    Node* const root = element(top(), "root");
    text(root, "one ");
    text(root, "comment", NodeKind::comment);
    Node* const inner = element(root, "inner");
    text(inner, "two", NodeKind::cdata);
    attribute(inner, name("a"), "value");
    text(root, " three");
    std::string storage;
    EXPECT_EQ(stringValue(root, storage), "one two three");
    EXPECT_EQ(stringValue(top(), storage), "one two three");
    EXPECT_EQ(stringValue(inner->firstAttribute(), storage), "value");
    EXPECT_EQ(stringValue(inner->previous, storage), "comment");
    std::string out = ">";
    appendStringValue(root, out);
    appendStringValue(inner->firstAttribute(), out);
    EXPECT_EQ(out, ">one two threevalue");
}

TEST_F(StringValues, CopyNothingWhenThereIsOneText) {
    Node* const root = element(top(), "root");
    Node const* const only = text(element(root, "inner"), "a text that is not kept in its node");
    std::string storage;
    EXPECT_EQ(stringValue(root, storage).data(), only->text().data());
    EXPECT_EQ(stringValue(element(root, "empty"), storage), "");
}

} // namespace tibxml::tree::test
