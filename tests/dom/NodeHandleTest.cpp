#include "EngineTest.h"

#include <type_traits>
#include <utility>

namespace {

static_assert(sizeof(WXmlNode) == sizeof(void*));
static_assert(std::is_nothrow_move_constructible_v<WXmlNode>);
static_assert(std::is_nothrow_move_assignable_v<WXmlNode>);

// NOLINTBEGIN(bugprone-use-after-move): much of this is about handles that were moved from

WXmlNode movedFrom() {
    WXmlNode node;
    WXmlNode const taker = std::move(node);
    return node;
}

TEST(NodeHandle, IsEmptyAtFirst) {
    WXmlNode const node;
    EXPECT_FALSE(node.IsValid());
    EXPECT_TRUE(node.SaveToString().IsEmpty());
    EXPECT_EQ(codeOf([&] { return node.GetXML(); }), E_POINTER);
    EXPECT_EQ(codeOf([&] { return node.GetName(); }), E_POINTER);
    EXPECT_FALSE(node.DoesNodeExist(L"a"));
    EXPECT_FALSE(node.HasChildren());
    EXPECT_EQ(node.GetNumChildren(), 0);
    EXPECT_FALSE(node.Value().Exists());
    EXPECT_FALSE(node.Attribute(L"@a").Exists());
}

TEST(NodeHandle, AnEmptyPointerMakesAnEmptyHandle) {
    EXPECT_FALSE(WXmlNode{WXmlNodePtr{}}.IsValid());
}

TEST(NodeHandle, TakesANodeByAReferenceOfItsOwn) {
    fake::Node* engine = nullptr;
    auto const pointer =
        fake::make<fake::Node, IXMLDOMNode>(std::make_shared<fake::Behaviour>(), engine);
    {
        WXmlNode const node{pointer};
        WXmlNode const copy = node;
        EXPECT_EQ(engine->AddRef(), 4U);
        engine->Release();
    }
    EXPECT_EQ(engine->AddRef(), 2U);
    engine->Release();
}

TEST(NodeHandle, CopiesReferToTheVeryNode) {
    WXmlDoc const document = loaded(L"<a/>");
    WXmlNode const node = document.GetRootNode();
    WXmlNode const copy = node;
    copy.Value().SetString(L"seen");
    EXPECT_EQ(utf8(node.Value().GetString()), "seen");
    EXPECT_TRUE(copy == node);
    WXmlNode assigned = loaded(L"<b/>").GetRootNode();
    assigned = node;
    EXPECT_TRUE(assigned == node);
    assigned = copy;
    EXPECT_TRUE(assigned == node) << "the same node already";
}

TEST(NodeHandle, AssigningToItselfChangesNothing) {
    WXmlNode node = loaded(L"<a/>").GetRootNode();
    WXmlNode& same = node;
    node = same;
    EXPECT_EQ(utf8(node.GetName()), "a");
    node = std::move(same);
    EXPECT_EQ(utf8(node.GetName()), "a");
}

TEST(NodeHandle, MovingTakesTheNode) {
    WXmlNode node = loaded(L"<a/>").GetRootNode();
    WXmlNode moved = std::move(node);
    EXPECT_EQ(utf8(moved.GetName()), "a");
    EXPECT_FALSE(node.IsValid());
    WXmlNode assigned = loaded(L"<b/>").GetRootNode();
    assigned = std::move(moved);
    EXPECT_EQ(utf8(assigned.GetName()), "a");
    EXPECT_FALSE(moved.IsValid());
}

TEST(NodeHandle, SwapExchangesTheNodes) {
    WXmlNode node = loaded(L"<a/>").GetRootNode();
    WXmlNode other;
    node.Swap(other);
    EXPECT_FALSE(node.IsValid());
    EXPECT_EQ(utf8(other.GetName()), "a");
}

TEST(NodeHandle, SwapExchangesHavingBeenMovedFrom) {
    WXmlNode gone = movedFrom();
    WXmlNode empty;
    gone.Swap(empty);
    EXPECT_TRUE(gone == WXmlNode{});
    EXPECT_TRUE(empty == movedFrom());
}

TEST(NodeHandle, TwoLookUpsOfOneNodeAreEqual) {
    WXmlDoc const document = loaded(L"<a><b/><b/></a>");
    EXPECT_TRUE(nodeAt(document, L"b[1]") == nodeAt(document, L"*"));
    EXPECT_FALSE(nodeAt(document, L"b[1]") != nodeAt(document, L"*"));
}

TEST(NodeHandle, NodesThatLookTheSameAreDifferent) {
    WXmlDoc const document = loaded(L"<a><b/><b/></a>");
    EXPECT_TRUE(nodeAt(document, L"b[1]") != nodeAt(document, L"b[2]"));
    EXPECT_FALSE(nodeAt(document, L"b[1]") == nodeAt(document, L"b[2]"));
}

TEST(NodeHandle, EmptyHandlesAreEqualAndDifferFromNodes) {
    EXPECT_TRUE(WXmlNode{} == WXmlNode{});
    EXPECT_FALSE(WXmlNode{} == loaded(L"<a/>").GetRootNode());
    EXPECT_FALSE(loaded(L"<a/>").GetRootNode() == WXmlNode{});
}

TEST(NodeHandle, MovedFromEqualsMovedFromOnly) {
    EXPECT_TRUE(movedFrom() == movedFrom());
    EXPECT_FALSE(movedFrom() == WXmlNode{});
    EXPECT_FALSE(WXmlNode{} == movedFrom());
    EXPECT_TRUE(movedFrom() != WXmlNode{});
    EXPECT_FALSE(movedFrom() == loaded(L"<a/>").GetRootNode());
}

TEST(NodeHandle, ComparingDoesNotRevive) {
    WXmlNode const gone = movedFrom();
    EXPECT_FALSE(gone == WXmlNode{});
    EXPECT_TRUE(gone == movedFrom());
}

TEST(NodeHandle, FirstUseRevivesWhatWasMovedFrom) {
    WXmlNode const gone = movedFrom();
    EXPECT_FALSE(gone.IsValid());
    EXPECT_TRUE(gone == WXmlNode{});
}

struct Use {
    char const* name;
    void (*use)(WXmlNode&);
};

// Everything that treats a handle that was moved from as an empty one.
Use const uses[] = {
    {"GetName", [](WXmlNode& n) { EXPECT_EQ(codeOf([&] { return n.GetName(); }), E_POINTER); }},
    {"GetXML", [](WXmlNode& n) { EXPECT_EQ(codeOf([&] { return n.GetXML(); }), E_POINTER); }},
    {"SaveToString", [](WXmlNode& n) { EXPECT_TRUE(n.SaveToString().IsEmpty()); }},
    {"Value", [](WXmlNode& n) { EXPECT_FALSE(n.Value().Exists()); }},
    {"Attribute", [](WXmlNode& n) { EXPECT_FALSE(n.Attribute(L"@a").Exists()); }},
    {"GetAttributes",
     [](WXmlNode& n) {
         std::vector<CString> names(2);
         EXPECT_EQ(codeOf([&] { n.GetAttributes(names); }), E_POINTER);
         EXPECT_TRUE(names.empty());
     }},
    {"DoesNodeExist", [](WXmlNode& n) { EXPECT_FALSE(n.DoesNodeExist(L"a")); }},
    {"GetNode into",
     [](WXmlNode& n) {
         WXmlNode out;
         EXPECT_FALSE(n.GetNode(L"a", out));
     }},
    {"GetNode", [](WXmlNode& n) { EXPECT_EQ(codeOf([&] { n.GetNode(L"a"); }), E_POINTER); }},
    {"GetNodeNoThrow",
     [](WXmlNode& n) { EXPECT_EQ(codeOf([&] { n.GetNodeNoThrow(L"a"); }), E_POINTER); }},
    {"GetNodes into",
     [](WXmlNode& n) {
         WXmlNodeList out;
         EXPECT_FALSE(n.GetNodes(L"a", out));
     }},
    {"GetNodes", [](WXmlNode& n) { EXPECT_EQ(codeOf([&] { n.GetNodes(L"a"); }), E_POINTER); }},
    {"GetParentNode",
     [](WXmlNode& n) { EXPECT_EQ(codeOf([&] { n.GetParentNode(); }), E_POINTER); }},
    {"GetOwnerDocument",
     [](WXmlNode& n) { EXPECT_EQ(codeOf([&] { n.GetOwnerDocument(); }), E_POINTER); }},
    {"HasChildren", [](WXmlNode& n) { EXPECT_FALSE(n.HasChildren()); }},
    {"GetNumChildren", [](WXmlNode& n) { EXPECT_EQ(n.GetNumChildren(), 0); }},
    {"IsValid", [](WXmlNode& n) { EXPECT_FALSE(n.IsValid()); }},
    {"EnsureDescendantExists",
     [](WXmlNode& n) { EXPECT_FALSE(n.EnsureDescendantExists(L"a/b").IsValid()); }},
    {"EnsureDescendantExists of no path",
     [](WXmlNode& n) { EXPECT_FALSE(n.EnsureDescendantExists(L"").IsValid()); }},
    {"CreateChild",
     [](WXmlNode& n) {
         EXPECT_EQ(codeOf([&] { n.CreateChild(L"a[@b='c']", nullptr); }), E_POINTER);
     }},
    {"Prune", [](WXmlNode& n) { n.Prune(); }},
    {"DeleteChild", [](WXmlNode& n) { n.DeleteChild(L"a/b"); }},
    {"DeleteNodes", [](WXmlNode& n) { n.DeleteNodes(L"a/b"); }},
    {"Graft at an index",
     [](WXmlNode& n) {
         WXmlNode parent;
         n.Graft(parent, 0);
     }},
    {"Graft in front of a node",
     [](WXmlNode& n) {
         WXmlNode parent;
         n.Graft(parent, WXmlNode{});
     }},
    {"Graft at an index, as the parent", [](WXmlNode& n) { WXmlNode{}.Graft(n, 0); }},
    {"Graft last, as the parent", [](WXmlNode& n) { WXmlNode{}.Graft(n, -1); }},
    {"Graft in front of a node, as the parent",
     [](WXmlNode& n) { WXmlNode{}.Graft(n, WXmlNode{}); }},
    {"Graft in front of a node, as that node",
     [](WXmlNode& n) {
         WXmlNode parent;
         WXmlNode{}.Graft(parent, n);
     }},
    {"Clone", [](WXmlNode& n) { EXPECT_FALSE(n.Clone(true).IsValid()); }},
    {"CopyAttributeFrom", [](WXmlNode& n) { n.CopyAttributeFrom(WXmlNode{}, L"@a", L""); }},
};

TEST(NodeHandle, EveryUseTakesMovedFromForEmptyAndRevivesIt) {
    for (Use const& use : uses) {
        SCOPED_TRACE(use.name);
        WXmlNode empty;
        use.use(empty);
        WXmlNode gone = movedFrom();
        use.use(gone);
        EXPECT_TRUE(gone == WXmlNode{});
    }
}

TEST(NodeHandle, AssignmentRevivesBothSides) {
    WXmlNode target = movedFrom();
    WXmlNode const source = movedFrom();
    target = source;
    EXPECT_TRUE(target == WXmlNode{});
    EXPECT_TRUE(source == WXmlNode{});
}

TEST(NodeHandle, ALookUpRevivesItsResult) {
    WXmlNode out = movedFrom();
    EXPECT_TRUE(loaded(L"<a><b/></a>").GetRootNode().GetNode(L"b", out));
    EXPECT_EQ(utf8(out.GetName()), "b");
}

TEST(NodeHandle, WhatIsNotForMovedFromHandlesDoesNotCrash) {
    WXmlNode const gone = movedFrom();
    WXmlNode const copy = gone;
    EXPECT_FALSE(copy.IsValid());
    EXPECT_EQ(codeOf([] { return movedFrom().GetNodes(L"a", true); }), E_POINTER);
}

// NOLINTEND(bugprone-use-after-move)

TEST(NodeHandle, KeepsTheNodeWhenTheDocumentHandleIsGone) {
    WXmlNode const node = loaded(L"<a><b>text</b></a>").GetRootNode().GetNode(L"b");
    EXPECT_EQ(utf8(node.GetXML()), "<b>text</b>");
    EXPECT_EQ(utf8(node.GetParentNode().GetName()), "a");
}

class NodeIdentity : public testing::Test {
protected:
    std::shared_ptr<fake::Behaviour> one = std::make_shared<fake::Behaviour>();
    std::shared_ptr<fake::Behaviour> other = std::make_shared<fake::Behaviour>();
    fake::Node* engine = nullptr;
    WXmlNode left{fake::make<fake::Node, IXMLDOMNode>(one, engine)};
    WXmlNode right{fake::make<fake::Node, IXMLDOMNode>(other, engine)};
};

TEST_F(NodeIdentity, ANodeThatDoesNotTellHasNone) {
    EXPECT_TRUE(left != right);
    one->refused = {{IID_IUnknown, E_UNEXPECTED}};
    EXPECT_TRUE(left != right);
    EXPECT_TRUE(left == WXmlNode{}) << "both have no identity";
    EXPECT_TRUE(left == WXmlNode{left}) << "the same pointer needs none";
    other->refused = {{IID_IUnknown, E_NOINTERFACE}};
    EXPECT_TRUE(left == right);
}

} // namespace
