#include "EngineTest.h"

namespace {

std::string rootOf(WXmlDoc const& document) {
    return utf8(document.GetRootNode().SaveToString());
}

// Defaults with an element that forbids changes and one that does not, and a user's document.
class CompositeNode : public testing::Test {
protected:
    WXmlDoc defaults =
        loaded(L"<d><view a='1' b='x'><col n='1'/><col n='2'/></view>"
               L"<fixed userCustomizable='false' a='1'/><old><page a='9'/></old></d>");
    WXmlDoc user = loaded(L"<u/>");

    int read(WXmlCompositeNode const& node, wchar_t const* name, bool defaultsOnly = false) {
        return node.ReadableAttribute(name, defaultsOnly).GetInt(-1);
    }

    void TearDown() override {
        EXPECT_EQ(rootOf(defaults),
                  "<d><view a=\"1\" b=\"x\"><col n=\"1\"/><col n=\"2\"/></view>"
                  "<fixed userCustomizable=\"false\" a=\"1\"/><old><page a=\"9\"/></old></d>")
            << "the defaults are never changed";
    }
};

TEST_F(CompositeNode, ReadsFallBackAndWritesGoToTheUsersDocument) {
    WXmlCompositeNode const view{defaults, user, L"view"};
    EXPECT_EQ(read(view, L"@a"), 1);
    view.WriteableAttribute(L"@a").SetInt(2);
    EXPECT_EQ(rootOf(user), "<u><view a=\"2\"/></u>");
    EXPECT_EQ(read(view, L"@a"), 2);
    EXPECT_EQ(read(view, L"@a", true), 1);
    EXPECT_EQ(utf8(view.ReadableAttribute(L"@b", false).GetString()), "x");
    EXPECT_EQ(read(WXmlCompositeNode{defaults, user, L"view"}, L"@a"), 2);
}

// Nothing is ever found by such a path, so each object makes an element of its own.
TEST_F(CompositeNode, APathThatCannotBeEvaluatedIsNeverThere) {
    WXPath const path{L"view[p:a]"};
    for (int value = 1; value != 3; ++value) {
        WXmlCompositeNode const view{defaults, user, path};
        EXPECT_EQ(read(view, L"@a"), -1);
        EXPECT_EQ(missingTypeOf([&] { view.WriteableAttribute(L"@a").SetInt(value); }), "int");
    }
    EXPECT_EQ(rootOf(user), "<u><view/><view/></u>");
    EXPECT_EQ(codeOf([&] { user.GetRootNode().GetNode(path); }), E_FAIL);
}

TEST_F(CompositeNode, AWholeChainOfElementsIsMade) {
    WXmlCompositeNode const node{defaults, user, L"a/b[@id='3']/c"};
    node.WriteableAttribute(L"@x").SetInt(1);
    EXPECT_EQ(rootOf(user), "<u><a><b id=\"3\"><c x=\"1\"/></b></a></u>");
    WXmlCompositeNode const sibling{defaults, user, L"a/b[@id='3']/d"};
    sibling.WriteableAttribute(L"@x").SetInt(2);
    EXPECT_EQ(rootOf(user), "<u><a><b id=\"3\"><c x=\"1\"/><d x=\"2\"/></b></a></u>");
}

TEST_F(CompositeNode, AnElementThatForbidsChangesKeepsThemForThisObjectOnly) {
    WXmlCompositeNode const fixed{defaults, user, L"fixed"};
    fixed.WriteableAttribute(L"@a").SetInt(2);
    EXPECT_EQ(read(fixed, L"@a"), 2);
    EXPECT_EQ(rootOf(user), "<u/>");
    ASSERT_NE(fixed.GetReadWriteNode(), nullptr);
    EXPECT_TRUE(fixed.GetReadWriteNode()->GetOwnerDocument() == user);
    EXPECT_EQ(utf8(fixed.GetReadWriteNode()->GetParentNode().GetName()), "d");
    EXPECT_EQ(read(WXmlCompositeNode{defaults, user, L"fixed"}, L"@a"), 1);
    EXPECT_EQ(read(WXmlCompositeNode{fixed}, L"@a"), 1);
}

TEST_F(CompositeNode, OnlyTheExactTextFalseForbidsChanges) {
    for (wchar_t const* text : {L"False", L"0", L"", L" false", L"no", L"true"}) {
        std::wstring const xml =
            L"<d><e a='1' userCustomizable='" + std::wstring{text} + L"'/></d>";
        WXmlDoc open = loaded(xml.c_str());
        WXmlDoc changed = loaded(L"<u/>");
        WXmlCompositeNode const node{open, changed, L"e"};
        node.WriteableAttribute(L"@a").SetInt(2);
        EXPECT_EQ(rootOf(changed), "<u><e a=\"2\"/></u>") << utf8(text);
    }
}

TEST_F(CompositeNode, AnElementThatNobodyHas) {
    WXmlCompositeNode node{defaults, user, L"x/y"};
    EXPECT_FALSE(node.Validate());
    EXPECT_EQ(node.GetReadOnlyNode(), nullptr);
    EXPECT_EQ(node.GetReadWriteNode(), nullptr);
    EXPECT_TRUE(node.GetName().IsEmpty());
    EXPECT_FALSE(node.ReadableAttribute(L"@a", false).Exists());
    EXPECT_FALSE(node.DoesNodeExist(L"col"));
    EXPECT_TRUE(node.CreateReadWriteNode(true, true));
    EXPECT_EQ(rootOf(user), "<u><x><y/></x></u>");
    EXPECT_TRUE(node.Validate());
    EXPECT_EQ(utf8(node.GetName()), "y");
}

TEST_F(CompositeNode, TheAlternativePathServesReadingOnly) {
    WXmlCompositeNode const node{defaults, user, L"page", L"old/page"};
    EXPECT_EQ(read(node, L"@a"), 9);
    node.WriteableAttribute(L"@a").SetInt(3);
    EXPECT_EQ(rootOf(user), "<u><page a=\"3\"/></u>");
    EXPECT_EQ(read(node, L"@a", true), 9);
    WXmlCompositeNode const direct{defaults, user, L"view", L"old/page"};
    EXPECT_EQ(read(direct, L"@a"), 1);
}

TEST_F(CompositeNode, PathsAreNormalised) {
    WXmlCompositeNode const node{defaults, user, L"old/page[../@k='1']"};
    EXPECT_EQ(utf8(node.XPath().ToString()), "old[@k='1']/page");
    EXPECT_EQ(&node.ReadOnlyDoc(), &defaults);
    EXPECT_EQ(&node.ReadWriteDoc(), &user);
}

TEST_F(CompositeNode, QueriesAskTheUsersDocumentFirst) {
    WXmlCompositeNode const view{defaults, user, L"view"};
    WXmlNode found;
    WXmlNodeList list;
    EXPECT_TRUE(view.DoesNodeExist(L"col"));
    EXPECT_TRUE(view.GetNode(L"col[2]", found));
    EXPECT_TRUE(found.GetOwnerDocument() == defaults);
    EXPECT_TRUE(view.GetNodes(L"col", list, false)) << "without an element the defaults answer";
    EXPECT_EQ(list.Count(), 2);
    ASSERT_TRUE(view.CreateReadWriteNode(false, false));
    EXPECT_FALSE(view.GetNodes(L"col", list, false));
    EXPECT_TRUE(view.GetNodes(L"col", list, true));
    EXPECT_TRUE(view.GetNode(L"col", found));
    view.GetReadWriteNode()->CreateChild(L"col[@n='7']", nullptr);
    EXPECT_TRUE(view.GetNodes(L"col", list, false));
    EXPECT_EQ(list.Count(), 1);
    EXPECT_TRUE(view.GetNode(L"col", found));
    EXPECT_TRUE(found.GetOwnerDocument() == user);
    EXPECT_FALSE(view.GetNode(L"none", found));
    EXPECT_FALSE(view.GetNode(L"col[", found));
}

TEST_F(CompositeNode, PruneShowsTheDefaultsAgain) {
    WXmlCompositeNode view{defaults, user, L"view"};
    view.Prune();
    EXPECT_EQ(rootOf(user), "<u/>");
    view.WriteableAttribute(L"@a").SetInt(2);
    view.Prune();
    EXPECT_EQ(rootOf(user), "<u/>");
    EXPECT_EQ(read(view, L"@a"), 1);
    EXPECT_EQ(view.GetReadWriteNode(), nullptr);
    view.WriteableAttribute(L"@a").SetInt(5);
    EXPECT_EQ(rootOf(user), "<u><view a=\"5\"/></u>");
}

TEST_F(CompositeNode, TheFirstWriteMayCopyTheDefaults) {
    EXPECT_TRUE((WXmlCompositeNode{defaults, user, L"view"}.CreateReadWriteNode(true, false)));
    EXPECT_EQ(rootOf(user), "<u><view a=\"1\" b=\"x\"><col n=\"1\"/><col n=\"2\"/></view></u>");
    WXmlDoc deep = loaded(L"<u/>");
    EXPECT_TRUE((WXmlCompositeNode{defaults, deep, L"old/page"}.CreateReadWriteNode(true, false)));
    EXPECT_EQ(rootOf(deep), "<u><old><page a=\"9\"/></old></u>");
    WXmlDoc parent = loaded(L"<u/>");
    EXPECT_TRUE((WXmlCompositeNode{defaults, parent, L"old/page"}.CreateReadWriteNode(true, true)));
    EXPECT_EQ(rootOf(parent), "<u><old><page a=\"9\"/></old></u>");
    WXmlDoc plain = loaded(L"<u/>");
    EXPECT_TRUE((WXmlCompositeNode{defaults, plain, L"view"}.CreateReadWriteNode(false, true)));
    EXPECT_EQ(rootOf(plain), "<u><view/></u>");
}

TEST_F(CompositeNode, AnExistingElementIsLeftAsItIs) {
    user = loaded(L"<u><view c='1'/></u>");
    EXPECT_TRUE((WXmlCompositeNode{defaults, user, L"view"}.CreateReadWriteNode(true, true)));
    EXPECT_EQ(rootOf(user), "<u><view c=\"1\"/></u>");
}

TEST_F(CompositeNode, ACopyOfTheDefaultsIsNotMadeForAnElementThatForbidsChanges) {
    WXmlCompositeNode const fixed{defaults, user, L"fixed"};
    EXPECT_TRUE(fixed.CreateReadWriteNode(true, false));
    EXPECT_EQ(rootOf(user), "<u/>");
}

TEST_F(CompositeNode, WithoutDocumentsEverythingAnswersNothing) {
    WXmlDoc none;
    WXmlDoc nothing;
    WXmlCompositeNode node{none, nothing, L"a"};
    EXPECT_FALSE(node.ReadableAttribute(L"@a", false).Exists());
    EXPECT_EQ(missingTypeOf([&] { node.WriteableAttribute(L"@a").SetInt(1); }), "int");
    EXPECT_FALSE(node.CreateReadWriteNode(true, true));
    EXPECT_TRUE(node.GetName().IsEmpty());
    EXPECT_FALSE(node.DoesNodeExist(L"a"));
    node.Prune();
    EXPECT_EQ(intOf([&] { node.Validate(); }), 1);
    EXPECT_EQ(intOf([&] { node.GetReadOnlyNode(); }), 1);
    EXPECT_EQ(intOf([&] { node.GetReadWriteNode(); }), 1);
}

TEST_F(CompositeNode, AnEmptyPathCannotBeMade) {
    WXmlCompositeNode const node{defaults, user, L""};
    EXPECT_FALSE(node.CreateReadWriteNode(false, false));
    EXPECT_EQ(missingTypeOf([&] { node.WriteableAttribute(L"@a").SetBool(true); }), "bool");
    EXPECT_EQ(rootOf(user), "<u/>");
}

TEST_F(CompositeNode, WhatWasFoundIsKept) {
    user = loaded(L"<u><view a='4'/></u>");
    WXmlCompositeNode const view{defaults, user, L"view"};
    EXPECT_EQ(read(view, L"@a"), 4);
    nodeAt(user, L"view").Prune();
    EXPECT_EQ(read(view, L"@a"), 4);
    EXPECT_EQ(read(WXmlCompositeNode{view}, L"@a"), 1) << "a copy looks again";
}

} // namespace
