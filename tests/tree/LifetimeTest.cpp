#include "Trees.h"

#include <random>
#include <vector>

namespace tibxml::tree::test {

// Whether a node was given back shows in the arena, which hands the last one given back out first.
class Lifetimes : public Tree {
protected:
    bool isGone(Node const* node) {
        Node* const next = document().arena().newNode(NodeKind::comment);
        bool const same = next == node;
        if (!same) document().arena().freeNode(next);
        return same;
    }

    std::size_t waiting() { return document().lifetimes().counts().detachedSubtrees; }

    // On the nodes of a detached subtree.
    std::size_t handlesWithin(Node const* top) {
        return (top->handle != nullptr ? 1 : 0) + document().lifetimes().innerHandles(top);
    }

    Node* root = element(top(), "root");
    Node* a = element(root, "a");
    Node* b = element(a, "b");
    Node* n = attribute(b, name("n"), "a value of more than sixteen bytes");
};

TEST_F(Lifetimes, EndWithRemovalWhenNobodyRefersToThem) {
    document().lifetimes().remove(a);
    EXPECT_EQ(childrenOf(root), "");
    EXPECT_TRUE(isGone(a));
}

TEST_F(Lifetimes, GoOnWhileAnyNodeOfTheSubtreeIsHeld) {
    for (Node* const held : {a, b, n}) {
        hold(held);
        document().lifetimes().remove(a);
        EXPECT_EQ(rootOf(n), a);
        EXPECT_EQ(n->text(), "a value of more than sixteen bytes");
        EXPECT_EQ(handlesWithin(a), 1U);
        letGo(held);
        EXPECT_EQ(waiting(), 0U);
        EXPECT_TRUE(isGone(a));
        a = element(root, "a");
        b = element(a, "b");
        n = attribute(b, name("n"), "a value of more than sixteen bytes");
    }
}

TEST_F(Lifetimes, EndWithTheLastOfSeveralHandles) {
    hold(a);
    hold(n);
    document().lifetimes().remove(a);
    hold(b); // asked for while detached
    letGo(a);
    letGo(n);
    EXPECT_EQ(childrenOf(a), "b");
    letGo(b);
    EXPECT_EQ(waiting(), 0U);
}

TEST_F(Lifetimes, OfAttributesEndApartFromTheirElement) {
    hold(n);
    document().lifetimes().remove(n);
    EXPECT_EQ(attributesOf(b), "");
    EXPECT_EQ(n->text(), "a value of more than sixteen bytes");
    letGo(n);
    EXPECT_TRUE(isGone(n));
}

TEST_F(Lifetimes, SplitWhenAPartOfADetachedTreeIsRemoved) {
    hold(a);
    hold(n);
    document().lifetimes().remove(a);
    document().lifetimes().remove(b);
    EXPECT_EQ(handlesWithin(a), 1U);
    EXPECT_EQ(handlesWithin(b), 1U);
    letGo(a);
    EXPECT_EQ(attributesOf(b), "n");
    letGo(n);
    EXPECT_EQ(waiting(), 0U);
}

TEST_F(Lifetimes, OfTheRestEndWhenTheHeldPartLeaves) {
    hold(b);
    document().lifetimes().remove(a);
    document().lifetimes().remove(b); // nothing refers to a any more
    EXPECT_TRUE(isGone(a));
    EXPECT_EQ(handlesWithin(b), 1U);
    letGo(b);
}

TEST_F(Lifetimes, AreNobodysConcernOnceTheNodesAreBack) {
    hold(b);
    document().lifetimes().remove(a);
    document().lifetimes().move(a, root, nullptr);
    EXPECT_EQ(waiting(), 0U);
    letGo(b);
    EXPECT_EQ(childrenOf(root), "a");
}

TEST_F(Lifetimes, AddUpWhenOneDetachedTreeGoesIntoAnother) {
    Node* const other = element(root, "other");
    hold(other);
    hold(b);
    document().lifetimes().remove(a);
    document().lifetimes().remove(other);
    document().lifetimes().move(a, other, nullptr);
    EXPECT_EQ(handlesWithin(other), 2U);
    letGo(other);
    EXPECT_EQ(childrenOf(other), "a");
    letGo(b);
    EXPECT_EQ(waiting(), 0U);
}

TEST_F(Lifetimes, OfChildrenAreSettledOneByOne) {
    Node* const c = element(root, "c");
    Node* const m = attribute(root, name("m"), "v");
    hold(b);
    hold(m);
    document().lifetimes().removeChildren(root, m);
    EXPECT_EQ(childrenOf(root), "");
    EXPECT_EQ(attributesOf(root), "");
    EXPECT_TRUE(isGone(c));
    EXPECT_EQ(rootOf(b), a);
    EXPECT_EQ(m->text(), "v");
    letGo(b);
    letGo(m);
    EXPECT_EQ(waiting(), 0U);
}

TEST_F(Lifetimes, OutlastTheContentOfTheDocument) {
    hold(b);
    document().lifetimes().clear();
    EXPECT_EQ(document().documentElement(), nullptr);
    EXPECT_EQ(rootOf(b), root);
    letGo(b);
    EXPECT_EQ(waiting(), 0U);
}

TEST_F(Lifetimes, GoOnWhileTheDocumentIsPinned) {
    document().lifetimes().pin();
    document().lifetimes().pin();
    document().lifetimes().remove(a);
    EXPECT_EQ(childrenOf(a), "b");
    document().lifetimes().unpin();
    EXPECT_EQ(childrenOf(a), "b");
    document().lifetimes().unpin();
    EXPECT_TRUE(isGone(a));
}

TEST_F(Lifetimes, OutlastThePinWhenHeldMeanwhile) {
    document().lifetimes().pin();
    document().lifetimes().remove(a);
    hold(b);
    document().lifetimes().unpin();
    EXPECT_EQ(rootOf(b), a);
    letGo(b);
    EXPECT_TRUE(isGone(a));
}

TEST_F(Lifetimes, EndWithThePinWhenHeldAndLetGoMeanwhile) {
    document().lifetimes().pin();
    document().lifetimes().remove(a);
    hold(b);
    letGo(b);
    hold(b);
    letGo(b);
    EXPECT_EQ(childrenOf(a), "b");
    document().lifetimes().unpin();
    EXPECT_TRUE(isGone(a));
}

TEST_F(Lifetimes, GoOnWhenAttachedAgainBeforeThePinEnds) {
    document().lifetimes().pin();
    document().lifetimes().remove(a);
    document().lifetimes().move(a, root, nullptr);
    document().lifetimes().unpin();
    EXPECT_EQ(childrenOf(root), "a");
    document().lifetimes().remove(a);
    EXPECT_TRUE(isGone(a));
}

TEST_F(Lifetimes, OfPartsRemovedOneAfterTheOtherEndWithThePin) {
    document().lifetimes().pin();
    document().lifetimes().remove(a);
    document().lifetimes().remove(b);
    document().lifetimes().remove(n);
    EXPECT_EQ(n->text(), "a value of more than sixteen bytes");
    document().lifetimes().unpin();
    EXPECT_EQ(document().lifetimes().counts().waiting, 0U);
}

TEST_F(Lifetimes, OfNodesPutIntoAWaitingTreeEndWithIt) {
    Node* const other = element(root, "other");
    document().lifetimes().pin();
    document().lifetimes().remove(other);
    document().lifetimes().remove(a);
    document().lifetimes().move(a, other, nullptr);
    document().lifetimes().unpin();
    EXPECT_EQ(childrenOf(root), "");
    EXPECT_TRUE(isGone(other));
}

TEST_F(Lifetimes, KeepCountsRightOverRandomEdits) {
    std::mt19937 random{5};
    std::vector<Node*> held;
    hold(root);
    for (int step = 0; step != 20000; ++step) {
        Node* const at = held.empty() ? root : held[random() % held.size()];
        switch (random() % 5) {
        case 0:
        case 1: { // make a child and hold it
            Node* const child = element(at, "x");
            hold(child);
            held.push_back(child);
            break;
        }
        case 2:
            if (at->parent != nullptr && at != root) document().lifetimes().remove(at);
            break;
        case 3: { // put a detached tree elsewhere
            Node* const moved = rootOf(at);
            if (moved != top() && !isInSubtree(root, moved)) {
                document().lifetimes().move(moved, root, nullptr);
            }
            break;
        }
        default:
            if (held.size() > 20) {
                letGo(held.front());
                held.erase(held.begin());
            }
        }
        std::size_t detached = 0;
        for (Node const* node : held)
            detached += rootOf(node) != top() ? 1 : 0;
        std::size_t counted = 0;
        for (Node const* node : held)
            counted += node->parent == nullptr ? 1 : 0;
        counted += document().lifetimes().counts().handles;
        ASSERT_EQ(counted, detached) << step;
    }
    for (Node* const node : held)
        letGo(node);
    letGo(root);
    EXPECT_EQ(waiting(), 0U);
}

TEST(DocumentStorage, LivesAsLongAsAnythingRefersToIt) {
    auto document = DocumentRef::adopt(Document::create());
    DocumentRef other = document;
    document = {};
    EXPECT_EQ(other->node()->kind, NodeKind::document);
    DocumentRef const moved = std::move(other);
    EXPECT_TRUE(static_cast<bool>(moved));
}

TEST(DocumentStorage, HasASerialOfItsOwn) {
    auto const one = DocumentRef::adopt(Document::create());
    auto const two = DocumentRef::adopt(Document::create());
    EXPECT_NE(one->serial(), two->serial());
}

} // namespace tibxml::tree::test
