#include "EngineTest.h"

namespace {

std::string xmlOf(WXmlNode const& node) {
    return utf8(node.SaveToString());
}

std::string rootOf(WXmlDoc const& document) {
    return xmlOf(document.GetRootNode());
}

TEST(NodeEditing, PruneTakesANodeOutAndKeepsItUsable) {
    WXmlDoc const document = loaded(L"<r><a><b>x</b></a>t<c/></r>");
    WXmlNode a = nodeAt(document, L"a");
    a.Prune();
    EXPECT_EQ(rootOf(document), "<r>t<c/></r>");
    EXPECT_EQ(xmlOf(a), "<a><b>x</b></a>");
    EXPECT_FALSE(a.GetParentNode().IsValid());
    EXPECT_TRUE(a.GetOwnerDocument() == document);
    EXPECT_TRUE(a.DoesNodeExist(L"b"));
    a.Prune();
    EXPECT_EQ(xmlOf(a), "<a><b>x</b></a>");
}

TEST(NodeEditing, PruneWorksOnEveryKindOfChildAndOnTheRoot) {
    WXmlDoc const document = loaded(L"<!--t--><r>t<![CDATA[c]]><!--c--><?p i?></r>");
    for (wchar_t const* path : {L"text()", L"text()", L"comment()", L"processing-instruction()"}) {
        nodeAt(document, path).Prune();
    }
    EXPECT_EQ(rootOf(document), "<r/>");
    document.GetRootNode().Prune();
    EXPECT_FALSE(document.IsLoaded());
}

TEST(NodeEditing, PruneLeavesAttributesDocumentsAndEmptyHandlesAlone) {
    WXmlDoc const document = loaded(L"<r a='1'/>");
    nodeAt(document, L"@a").Prune();
    nodeAt(document, L"/").Prune();
    WXmlNode{}.Prune();
    EXPECT_EQ(rootOf(document), "<r a=\"1\"/>");
}

struct Deletion {
    wchar_t const* before;
    wchar_t const* path;
    char const* deleteChild;
    char const* deleteNodes;
};

constexpr Deletion deletions[] = {
    {L"<r><y/><x><y/></x></r>", L"x/y", "<r><x><y/></x></r>", "<r><y/><x/></r>"},
    {L"<r><a/>t<a/><b/></r>", L"a", "<r>t<b/></r>", "<r>t<b/></r>"},
    {L"<r><a/><a/><a/></r>", L"a[2]", "<r><a/><a/></r>", "<r><a/><a/></r>"},
    {L"<r><a><a/></a><b><a/></b></r>", L"//a", "<r><b><a/></b></r>", "<r><b/></r>"},
    {L"<r k='1'><a k='2'/></r>", L"@k", "<r k=\"1\"><a k=\"2\"/></r>",
     "<r k=\"1\"><a k=\"2\"/></r>"},
    {L"<r><a/></r>", L"none", "<r><a/></r>", "<r><a/></r>"},
    {L"<r><a/></r>", L"a[", "<r><a/></r>", "<r><a/></r>"},
    {L"<r><a/></r>", L"", "<r><a/></r>", "<r><a/></r>"},
    {L"<r><a/></r>", L"p:a", "<r><a/></r>", "<r><a/></r>"},
};

TEST(NodeEditing, DeleteChildCountsTheLastStepAndDeleteNodesTheWholePath) {
    for (Deletion const& row : deletions) {
        SCOPED_TRACE(utf8(row.before) + " " + utf8(row.path));
        WXmlDoc const first = loaded(row.before);
        first.GetRootNode().DeleteChild(row.path);
        EXPECT_EQ(rootOf(first), row.deleteChild);
        WXmlDoc const second = loaded(row.before);
        second.GetRootNode().DeleteNodes(row.path);
        EXPECT_EQ(rootOf(second), row.deleteNodes);
    }
    WXmlNode{}.DeleteChild(L"a");
    WXmlNode{}.DeleteNodes(L"a");
}

struct Position {
    int index;
    char const* after;
};

constexpr Position positions[] = {
    {0, "<r><n/>t<a/><b/></r>"},  {1, "<r>t<n/><a/><b/></r>"},   {2, "<r>t<a/><n/><b/></r>"},
    {3, "<r>t<a/><b/><n/></r>"},  {100, "<r>t<a/><b/><n/></r>"}, {-1, "<r>t<a/><b/><n/></r>"},
    {-2, "<r>t<a/><b/><n/></r>"},
};

TEST(NodeEditing, GraftPutsANodeAtAPositionAmongAllChildren) {
    for (Position const& row : positions) {
        WXmlDoc const document = loaded(L"<r>t<a/><b/></r>");
        WXmlNode root = document.GetRootNode();
        WXmlNode node = document.CreateNode(L"n", nullptr);
        node.Graft(root, row.index);
        EXPECT_EQ(rootOf(document), row.after) << row.index;
    }
}

TEST(NodeEditing, GraftMovesANodeThatHasAParent) {
    WXmlDoc const document = loaded(L"<r><a/><b/><c/></r>");
    WXmlNode root = document.GetRootNode();
    nodeAt(document, L"a").Graft(root, -1);
    EXPECT_EQ(rootOf(document), "<r><b/><c/><a/></r>");
    nodeAt(document, L"a").Graft(root, 0);
    EXPECT_EQ(rootOf(document), "<r><a/><b/><c/></r>");
    WXmlNode b = nodeAt(document, L"b");
    nodeAt(document, L"c").Graft(b, nodeAt(document, L"none"));
    EXPECT_EQ(rootOf(document), "<r><a/><b><c/></b></r>");
    nodeAt(document, L"b/c").Graft(root, b);
    EXPECT_EQ(rootOf(document), "<r><a/><c/><b/></r>");
    b.Graft(root, b);
    EXPECT_EQ(rootOf(document), "<r><a/><c/><b/></r>");
}

TEST(NodeEditing, GraftToAnotherDocumentKeepsHandlesAndIdentity) {
    WXmlDoc const source = loaded(L"<r><a k='1'><b>x</b></a></r>");
    WXmlNode a = nodeAt(source, L"a");
    WXmlNode const b = nodeAt(source, L"a/b");
    {
        WXmlDoc const target = loaded(L"<s><t/></s>");
        WXmlNode t = nodeAt(target, L"t");
        a.Graft(t, -1);
        EXPECT_EQ(rootOf(source), "<r/>");
        EXPECT_EQ(rootOf(target), "<s><t><a k=\"1\"><b>x</b></a></t></s>");
        EXPECT_TRUE(nodeAt(target, L"t/a") == a);
        EXPECT_TRUE(nodeAt(target, L"t/a/b") == b);
        EXPECT_TRUE(b.GetOwnerDocument() == target);
        EXPECT_FALSE(b.GetOwnerDocument() == source);
    }
    EXPECT_EQ(xmlOf(b), "<b>x</b>");
    EXPECT_TRUE(b.GetParentNode() == a);
}

TEST(NodeEditing, NodesInAListFollowWhenTheyMoveToAnotherDocument) {
    WXmlDoc const source = loaded(L"<r><a><b/></a><a/></r>");
    WXmlNodeList list = source.GetRootNode().GetNodes(L"//b | //a");
    WXmlDoc const target = loaded(L"<s/>");
    WXmlNode s = target.GetRootNode();
    nodeAt(source, L"a").Graft(s, -1);
    ASSERT_EQ(list.Count(), 3);
    EXPECT_TRUE(list.Node(0) == nodeAt(target, L"a"));
    EXPECT_TRUE(list.Node(1) == nodeAt(target, L"a/b"));
    EXPECT_TRUE(list.Node(2) == nodeAt(source, L"a"));
}

TEST(NodeEditing, GraftPutsAttributesAmongAttributes) {
    WXmlDoc const document = loaded(L"<r><a k='1' m='2'/><b x='0' k='old' y='0'/></r>");
    WXmlNode k = nodeAt(document, L"a/@k");
    WXmlNode b = nodeAt(document, L"b");
    k.Graft(b, 0);
    EXPECT_EQ(rootOf(document), "<r><a m=\"2\"/><b x=\"0\" k=\"1\" y=\"0\"/></r>");
    EXPECT_TRUE(nodeAt(document, L"b/@k") == k);
    // The other form has no case for attributes.
    nodeAt(document, L"a/@m").Graft(b, WXmlNode{});
    EXPECT_EQ(rootOf(document), "<r><a m=\"2\"/><b x=\"0\" k=\"1\" y=\"0\"/></r>");
    WXmlDoc const other = loaded(L"<s/>");
    WXmlNode s = other.GetRootNode();
    k.Graft(s, -1);
    EXPECT_EQ(rootOf(other), "<s k=\"1\"/>");
    EXPECT_TRUE(k.GetOwnerDocument() == other);
}

TEST(NodeEditing, WhatTheEngineRefusesChangesNothing) {
    wchar_t const* const xml = L"<!--c--><r a='1'><x><y/></x>t</r>";
    WXmlDoc const document = loaded(xml);
    std::string const before = utf8(document.SaveToString());
    WXmlNode top = nodeAt(document, L"/");
    WXmlNode root = document.GetRootNode();
    WXmlNode x = nodeAt(document, L"x");
    WXmlNode y = nodeAt(document, L"x/y");
    WXmlNode text = nodeAt(document, L"text()");
    WXmlNode attribute = nodeAt(document, L"@a");
    WXmlNode empty;
    x.Graft(x, -1);
    x.Graft(y, 0);
    root.Graft(y, -1);
    top.Graft(root, -1);
    text.Graft(top, -1);
    y.Graft(top, -1);
    y.Graft(text, -1);
    y.Graft(attribute, -1);
    attribute.Graft(top, -1);
    y.Graft(empty, -1);
    empty.Graft(root, -1);
    y.Graft(root, y);
    EXPECT_EQ(utf8(document.SaveToString()), before);
}

TEST(NodeEditing, CloneMakesADetachedCopyInTheSameDocument) {
    WXmlDoc const document = loaded(L"<r><a k='1'>x<b/><!--c--></a></r>");
    WXmlNode const a = nodeAt(document, L"a");
    WXmlNode deep = a.Clone(true);
    EXPECT_EQ(xmlOf(deep), "<a k=\"1\">x<b/><!--c--></a>");
    EXPECT_EQ(xmlOf(a.Clone(false)), "<a k=\"1\"/>");
    EXPECT_FALSE(deep == a);
    EXPECT_FALSE(deep.GetParentNode().IsValid());
    EXPECT_TRUE(deep.GetOwnerDocument() == document);
    deep.GetNode(L"b").Prune();
    EXPECT_EQ(rootOf(document), "<r><a k=\"1\">x<b/><!--c--></a></r>");
    EXPECT_FALSE(WXmlNode{}.Clone(true).IsValid());
}

TEST(NodeEditing, EveryKindOfNodeCanBeCloned) {
    WXmlDoc const document = loaded(L"<r a='1'>t<![CDATA[c]]><!--c--><?p i?></r>");
    for (wchar_t const* path :
         {L"@a", L"text()[1]", L"text()[2]", L"comment()", L"processing-instruction()"}) {
        WXmlNode const node = nodeAt(document, path);
        EXPECT_EQ(xmlOf(node.Clone(true)), xmlOf(node));
    }
    EXPECT_EQ(xmlOf(nodeAt(document, L"/").Clone(true)), xmlOf(nodeAt(document, L"/")));
}

struct Copying {
    wchar_t const* source;
    wchar_t const* target;
    char const* after;
};

// The attribute w, whose default is 0.
constexpr Copying copies[] = {
    {L"<s w='5'/>", L"<t/>", "<t w=\"5\"/>"},      {L"<s w='5'/>", L"<t w='7'/>", "<t w=\"5\"/>"},
    {L"<s w='0'/>", L"<t w='7'/>", "<t w=\"\"/>"}, {L"<s w='0'/>", L"<t/>", "<t/>"},
    {L"<s/>", L"<t w='7'/>", "<t w=\"\"/>"},       {L"<s/>", L"<t/>", "<t/>"},
    {L"<s w=''/>", L"<t/>", "<t w=\"\"/>"},
};

TEST(NodeEditing, CopyAttributeFromWritesOnlyWhatDiffersFromTheDefault) {
    for (Copying const& row : copies) {
        SCOPED_TRACE(utf8(row.source) + utf8(row.target));
        WXmlDoc const source = loaded(row.source);
        WXmlDoc const target = loaded(row.target);
        target.GetRootNode().CopyAttributeFrom(source.GetRootNode(), L"@w", L"0");
        EXPECT_EQ(rootOf(target), row.after);
    }
}

TEST(NodeEditing, CopyAttributeFromComparesCaseAndRaisesWithoutATarget) {
    WXmlDoc const document = loaded(L"<r><s w='Off'/><t/></r>");
    nodeAt(document, L"t").CopyAttributeFrom(nodeAt(document, L"s"), L"@w", L"off");
    EXPECT_EQ(xmlOf(nodeAt(document, L"t")), "<t w=\"Off\"/>");
    auto const copyToNobody = [&] {
        WXmlNode{}.CopyAttributeFrom(nodeAt(document, L"s"), L"@w", L"off");
    };
    EXPECT_EQ(missingTypeOf(copyToNobody), "string");
    WXmlNode{}.CopyAttributeFrom(WXmlNode{}, L"@w", L"off");
}

} // namespace
