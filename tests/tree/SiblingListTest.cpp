#include "Trees.h"

#include <random>
#include <utility>
#include <vector>

#include <tree/Document.h>

namespace tibxml::tree::test {

class SiblingLists : public Tree {
protected:
    Node* child(std::string_view local) { return element(parent, local); }

    Node* detached(std::string_view local) { return element(nullptr, local); }

    Node* parent = element(top(), "parent");
};

TEST_F(SiblingLists, AreEmptyAtFirst) {
    EXPECT_EQ(parent->firstChild(), nullptr);
    EXPECT_EQ(parent->lastChild(), nullptr);
    EXPECT_EQ(parent->firstAttribute(), nullptr);
}

TEST_F(SiblingLists, HoldTogetherAfterEachUnlink) {
    struct Row {
        std::size_t taken;
        char const* left;
    };

    for (Row const& row : {Row{0, "bc"}, Row{1, "ac"}, Row{2, "ab"}}) {
        Node* const nodes[] = {child("a"), child("b"), child("c")};
        Node* const taken = nodes[row.taken];
        unlink(document(), taken);
        EXPECT_EQ(childrenOf(parent), row.left);
        EXPECT_EQ(taken->parent, nullptr);
        EXPECT_EQ(taken->next, nullptr);
        EXPECT_EQ(taken->previousSibling(), nullptr);
        document().lifetimes().removeChildren(parent);
        EXPECT_EQ(childrenOf(parent), "");
    }
}

TEST_F(SiblingLists, HoldTogetherAfterEachInsertion) {
    Node* const b = child("b");
    insertBefore(document(), parent, detached("a"), b);
    EXPECT_EQ(childrenOf(parent), "ab");
    Node* const d = child("d");
    insertBefore(document(), parent, detached("c"), d);
    EXPECT_EQ(childrenOf(parent), "abcd");
    EXPECT_EQ(parent->lastChild(), d);
}

TEST_F(SiblingLists, KeepAttributesApartFromChildren) {
    Node* const b = attribute(parent, name("b"), "2");
    child("x");
    Node* const a = attribute(nullptr, name("a"), "1");
    insertBefore(document(), parent, a, b);
    EXPECT_EQ(attributesOf(parent), "ab");
    EXPECT_EQ(childrenOf(parent), "x");
    unlink(document(), b);
    EXPECT_EQ(attributesOf(parent), "a");
    unlink(document(), a);
    EXPECT_EQ(attributesOf(parent), "");
    EXPECT_EQ(childrenOf(parent), "x");
}

TEST_F(SiblingLists, FindAttributesByEitherName) {
    Node* const one = attribute(parent, name("a", "p", "urn:x"), "1");
    Node* const two = attribute(parent, name("a"), "2");
    EXPECT_EQ(findAttribute(parent, "p:a"), one);
    EXPECT_EQ(findAttribute(parent, "a"), two);
    EXPECT_EQ(findAttribute(parent, "q:a"), nullptr);
    EXPECT_EQ(findAttribute(parent, name("a", "q", "urn:x")->expanded), one);
    EXPECT_EQ(findAttribute(parent, name("a", "", "urn:y")->expanded), nullptr);
    EXPECT_EQ(findAttribute(text(parent, "t"), "a"), nullptr);
}

TEST_F(SiblingLists, ChangeTheVersion) {
    std::uint64_t last = document().version();
    auto const changed = [&] { return std::exchange(last, document().version()) != last; };
    Node* const a = child("a");
    EXPECT_TRUE(changed());
    Node* const t = text(a, "x");
    changed();
    setText(document(), t, "y");
    EXPECT_TRUE(changed());
    unlink(document(), a);
    EXPECT_TRUE(changed());
    insertBefore(document(), parent, a, child("b"));
    EXPECT_TRUE(changed());
    attribute(a, name("n"), "v");
    EXPECT_TRUE(changed());
    findAttribute(a, "n");
    EXPECT_FALSE(changed());
}

TEST_F(SiblingLists, AgreeWithAVectorAfterRandomEdits) {
    std::mt19937 random{3};
    std::vector<Node*> model;
    std::vector<Node*> spare;
    for (char c = 'a'; c <= 'z'; ++c)
        spare.push_back(detached(std::string(1, c)));
    for (int step = 0; step != 20000; ++step) {
        if (!spare.empty() && random() % 2 == 0) {
            Node* const node = spare.back();
            spare.pop_back();
            std::size_t const at = random() % (model.size() + 1);
            if (at == model.size()) {
                appendChild(document(), parent, node);
            } else {
                insertBefore(document(), parent, node, model[at]);
            }
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(at), node);
        } else if (!model.empty()) {
            auto const at = model.begin() + static_cast<std::ptrdiff_t>(random() % model.size());
            unlink(document(), *at);
            spare.push_back(*at);
            model.erase(at);
        }
        std::string expected;
        for (Node const* node : model)
            expected += node->name->local;
        ASSERT_EQ(childrenOf(parent), expected) << step;
    }
}

using Walks = SiblingLists;

TEST_F(Walks, VisitInDocumentOrderAndStayInside) {
    Node* const a = child("a");
    element(element(a, "b"), "c");
    element(a, "d");
    child("e");
    std::string names;
    for (Node const* n = a; n != nullptr; n = nextInSubtree(n, a))
        names += n->name->local;
    EXPECT_EQ(names, "abcd");
    EXPECT_EQ(nextAfterSubtree(a->firstChild(), a), a->lastChild());
    EXPECT_EQ(nextAfterSubtree(a, a), nullptr);
}

TEST_F(Walks, KnowTheTopAndTheSubtree) {
    Node* const a = child("a");
    Node* const n = attribute(a, name("n"), "v");
    EXPECT_EQ(rootOf(n), top());
    EXPECT_TRUE(isInSubtree(n, a));
    EXPECT_TRUE(isInSubtree(a, a));
    EXPECT_FALSE(isInSubtree(parent, a));
    unlink(document(), parent);
    EXPECT_EQ(rootOf(n), parent);
}

TEST_F(Walks, GoDeeperThanAnyStack) {
    Node* deepest = parent;
    for (int i = 0; i != 200000; ++i)
        deepest = element(deepest, "e");
    document().ensureOrder(deepest);
    EXPECT_EQ(deepest->order, 200001U);
    document().lifetimes().remove(parent);
    EXPECT_EQ(childrenOf(top()), "");
}

TEST_F(Walks, NumberNodesInDocumentOrder) {
    Node* const a = child("a");
    Node* const n = attribute(a, name("n"), "v");
    Node* const b = element(a, "b");
    Node* const c = child("c");
    document().ensureOrder(c);
    EXPECT_TRUE(comesBefore(parent, a));
    EXPECT_TRUE(comesBefore(a, n));
    EXPECT_TRUE(comesBefore(n, b));
    EXPECT_TRUE(comesBefore(b, c));
    unlink(document(), a);
    appendChild(document(), parent, a);
    document().ensureOrder(a);
    EXPECT_TRUE(comesBefore(c, a));
}

TEST_F(Walks, NumberADetachedTreeAndTheDocumentInTurn) {
    Node* const top = element(nullptr, "top");
    Node* const inside = element(top, "inside");
    Node* const c = child("c");
    for (int i = 0; i != 2; ++i) {
        document().ensureOrder(inside);
        EXPECT_TRUE(comesBefore(top, inside));
        document().ensureOrder(c);
        EXPECT_TRUE(comesBefore(parent, c));
    }
}

} // namespace tibxml::tree::test
