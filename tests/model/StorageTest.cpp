// A document that is edited for ever does not grow: what was removed is used again.
//
// TIBXML_STORAGE_ROUNDS sets how often a subtree comes and goes.

#include "EngineTest.h"

#include <calls/EngineCall.h>
#include <com/Measures.h>

#include <cstdlib>
#include <deque>

namespace {

constexpr int children = 33; // elements with an attribute and a text: 100 nodes with their parent

int rounds() {
    char const* const value = std::getenv("TIBXML_STORAGE_ROUNDS");
    return value != nullptr ? std::atoi(value) : 20'000;
}

// A document whose storage can be measured.
class Measured {
public:
    Measured() {
        EXPECT_EQ(tibxml::engine::createObject(CLSID_DOMDocument60, engine_), S_OK);
        VARIANT_BOOL done = VARIANT_FALSE;
        EXPECT_EQ(engine_->loadXML(_bstr_t{L"<root/>"}, &done), S_OK);
    }

    WXmlDoc document() const { return WXmlDoc{engine_}; }

    WXmlNode root() const { return document().GetRootNode(); }

    // Bytes taken from the heap for nodes, names and texts.
    std::size_t footprint() const { return tibxml::com::footprint(engine_); }

private:
    WXmlDocPtr engine_;
};

// Texts of many lengths: in the node, in blocks of several sizes, and alone.
std::wstring textOfRound(int round) {
    int const length = round % 500 == 499 ? 70'000 : 1 + (round * 7) % 60;
    return std::wstring(static_cast<std::size_t>(length), L'x');
}

void fill(WXmlNode& parent, int round) {
    for (int i = 0; i != children; ++i) {
        WXmlNode child = parent.CreateChild(L"child", nullptr);
        child.Attribute(L"@name").SetString(textOfRound(i).c_str());
        child.Value().SetString(textOfRound(round + i).c_str());
    }
    EXPECT_EQ(parent.GetNodes(L"descendant-or-self::node() | .//@*").Count(), 1 + 3 * children);
}

// How many rounds it may take until everything that is ever needed at a time was needed.
constexpr int settling = 1000;

template <class Round>
void expectBounded(std::vector<Measured const*> const& documents, int count, Round run) {
    std::vector<std::size_t> settled;
    for (int round = 0; round != count; ++round) {
        if (round == std::min(settling, count / 2)) {
            for (Measured const* document : documents)
                settled.push_back(document->footprint());
        }
        run(round);
    }
    for (std::size_t i = 0; i != documents.size(); ++i)
        EXPECT_LE(documents[i]->footprint(), settled[i]) << "after " << count << " rounds";
}

TEST(Storage, IsUsedAgainForNodesMadeOneByOne) {
    Measured const measured;
    expectBounded({&measured}, std::max(rounds() / 20, 1000), [&](int round) {
        WXmlNode root = measured.root();
        WXmlNode subtree = root.CreateChild(L"subtree", nullptr);
        fill(subtree, round % 40);
        subtree.Prune();
    });
    EXPECT_LT(measured.footprint(), 100'000U);
}

class SubtreeStorage : public testing::Test {
protected:
    SubtreeStorage() { fill(sample_, 0); }

    WXmlNode newSubtree() { return sample_.Clone(true); }

    Measured measured;
    WXmlNode root = measured.root();

private:
    WXmlNode sample_ = measured.document().CreateNode(L"sample", nullptr);
};

TEST_F(SubtreeStorage, IsUsedAgainWhenNobodyHoldsANode) {
    expectBounded({&measured}, rounds(), [&](int) {
        WXmlNode subtree = newSubtree();
        subtree.Graft(root, -1);
        subtree.Prune();
    });
    EXPECT_LT(measured.footprint(), 100'000U);
}

TEST_F(SubtreeStorage, IsUsedAgainWhenAParentGoesWithItsChildren) {
    expectBounded({&measured}, rounds(), [&](int) {
        newSubtree().Graft(root, -1);
        root.DeleteNodes(L"*");
        EXPECT_EQ(root.GetNumChildren(), 0);
    });
}

TEST_F(SubtreeStorage, IsUsedAgainOnceHandlesAreGone) {
    std::deque<WXmlNode> held;
    expectBounded({&measured}, rounds(), [&](int round) {
        WXmlNode subtree = newSubtree();
        subtree.Graft(root, 0);
        held.push_back(round % 3 == 0 ? subtree.GetNode(L"child[5]/@name")
                                      : subtree.GetNode(L"child[7]"));
        if (held.size() > 20) held.erase(held.begin() + round % 20);
        subtree.Prune();
    });
}

TEST_F(SubtreeStorage, IsUsedAgainOnceListsAreGone) {
    std::deque<WXmlNodeList> held;
    expectBounded({&measured}, rounds(), [&](int round) {
        WXmlNode subtree = newSubtree();
        subtree.Graft(root, 0);
        if (round % 50 < 10) held.push_back(subtree.GetNodes(L"child[position() < 4]"));
        subtree.Prune();
        if (round % 50 == 40) held.clear();
    });
}

TEST_F(SubtreeStorage, IsUsedAgainForAttributesAndTexts) {
    expectBounded({&measured}, rounds(), [&](int round) {
        root.Attribute(L"@name").SetString(textOfRound(round).c_str());
        root.Value().SetString(textOfRound(round + 1).c_str());
        if (round % 2 == 0) root.Attribute(L"@name").Delete();
    });
}

TEST_F(SubtreeStorage, IsUsedAgainByMovesToAndFro) {
    Measured const other;
    WXmlNode there = other.root();
    WXmlNode moving = newSubtree();
    WXmlNode const inside = moving.GetNode(L"child[3]/text()");
    expectBounded({&measured, &other}, rounds(), [&](int round) {
        moving.Graft(round % 2 == 0 ? there : root, -1);
        EXPECT_EQ(inside.GetOwnerDocument() == other.document(), round % 2 == 0);
    });
    EXPECT_LT(measured.footprint() + other.footprint(), 150'000U);
}

TEST_F(SubtreeStorage, IsUsedAgainByAttributesThatMove) {
    Measured const other;
    WXmlNode there = other.root();
    root.Attribute(L"@name").SetString(L"a value that does not fit into its node");
    WXmlNode attribute = root.GetNode(L"@name");
    expectBounded({&measured, &other}, rounds(),
                  [&](int round) { attribute.Graft(round % 2 == 0 ? there : root, -1); });
}

} // namespace
