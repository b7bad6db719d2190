#include "Trees.h"

#include <random>

#include <tree/Cloning.h>
#include <tree/DocumentWriter.h>
#include <tree/Editing.h>

namespace tibxml::tree::test {

class Depth : public Tree {
protected:
    // The lowest of so many elements within each other.
    Node* chain(Node* parent, unsigned height) {
        for (unsigned i = 0; i != height; ++i)
            parent = element(parent, "e");
        return parent;
    }

    static unsigned heightOf(Node const* top) {
        unsigned below = 0;
        for (Node const* child = top->firstChild(); child != nullptr; child = child->next)
            below = std::max(below, heightOf(child));
        return below + (top->is(NodeKind::element) ? 1 : 0);
    }

    static unsigned depthOf(Node const* node) {
        unsigned depth = 0;
        for (; node != nullptr; node = node->parent)
            depth += node->is(NodeKind::element) ? 1 : 0;
        return depth;
    }
};

TEST_F(Depth, CountsElementsOnly) {
    Node* const parent = chain(top(), 3);
    Node* const one = element(nullptr, "one");
    EXPECT_TRUE(fitsBelow(parent, one, 4));
    EXPECT_FALSE(fitsBelow(parent, one, 3));
    text(one, "t");
    attribute(one, name("k"), "v");
    EXPECT_TRUE(fitsBelow(parent, one, 4));
    EXPECT_TRUE(fitsBelow(parent, text(nullptr, "t"), 3));
    EXPECT_TRUE(fitsBelow(top(), one, 1));
    element(one, "two");
    EXPECT_FALSE(fitsBelow(parent, one, 4));
    EXPECT_TRUE(fitsBelow(parent, one, 5));
}

TEST_F(Depth, IsThatOfTheDeepestElement) {
    Node* const large = element(nullptr, "large");
    for (int i = 0; i != 10; ++i)
        chain(large, 2);
    Node* const deepest = chain(large, 5);
    for (int i = 0; i != 10; ++i)
        chain(large, 3);
    EXPECT_FALSE(fitsBelow(top(), large, 5));
    EXPECT_TRUE(fitsBelow(top(), large, 6));
    unlink(document(), deepest);
    EXPECT_FALSE(fitsBelow(top(), large, 4));
    EXPECT_TRUE(fitsBelow(top(), large, 5));
    EXPECT_EQ(large->levels, 4) << "found out once";
}

TEST_F(Depth, IsKnownOfTreesFromReadersAndOfCopies) {
    {
        DocumentWriter writer{document()};
        for (int i = 0; i != 4; ++i)
            writer.openElement(name("e"));
        for (int i = 0; i != 4; ++i)
            writer.closeElement();
    }
    Node* const root = document().documentElement();
    EXPECT_EQ(root->levels, 3);
    Node* const copy = clone(document(), document(), root, CloneDepth::deep);
    EXPECT_EQ(copy->levels, 3);
    Node* const shallow = clone(document(), document(), root, CloneDepth::shallow);
    EXPECT_EQ(shallow->levels, 0);
    EXPECT_FALSE(fitsBelow(root, copy, 4));
    EXPECT_TRUE(fitsBelow(root, copy, 5));
}

TEST_F(Depth, IsExactAtTheUpperEnd) {
    Node* const parent = element(top(), "top");
    Node* const high = element(nullptr, "high");
    Node* const lowest = chain(high, 254);
    EXPECT_TRUE(fitsBelow(parent, high, 256));
    Node* const last = element(lowest, "e");
    EXPECT_FALSE(fitsBelow(parent, high, 256));
    EXPECT_TRUE(fitsBelow(top(), high, 256));
    unlink(document(), last);
    EXPECT_TRUE(fitsBelow(parent, high, 256));
}

// Whatever was edited before, the answer is what counting says.
TEST_F(Depth, IsNeverMistaken) {
    std::mt19937 random{7};
    for (int round = 0; round != 50; ++round) {
        std::vector<Node*> nodes{element(nullptr, "a"), element(nullptr, "b")};
        for (int step = 0; step != 200; ++step) {
            Node* const parent = nodes[random() % nodes.size()];
            if (random() % 3 == 0) {
                nodes.push_back(element(parent, "e"));
                continue;
            }
            Node* const child = nodes[random() % nodes.size()];
            if (isInSubtree(parent, child)) continue;
            unsigned const maximum = 1 + static_cast<unsigned>(random() % 12);
            bool const fits = depthOf(parent) + heightOf(child) <= maximum;
            ASSERT_EQ(fitsBelow(parent, child, maximum), fits) << round << ' ' << step;
            for (Node const* node : nodes)
                ASSERT_GE(node->levels + 1U, heightOf(node)) << round << ' ' << step;
            if (child->parent != nullptr) unlink(document(), child);
            if (fits) appendChild(document(), parent, child);
        }
    }
}

} // namespace tibxml::tree::test
