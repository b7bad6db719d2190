#include "EngineTest.h"

namespace {

class NodeQueries : public testing::Test {
protected:
    WXmlDoc document = loaded(L"<r><a id='1'><b>one</b></a><a id='2'><b>two</b></a><!--c--></r>");
    WXmlNode root = document.GetRootNode();
    WXmlNode before = root.GetNode(L"a[2]");
};

wchar_t const* const badPaths[] = {L"",    L"a[",  L"a]",  L"1",  L"count(a)",  L"'x'",
                                   L"p:a", L"a//", L"a b", L"$v", L"no-such()", L"a[@id='1"};

TEST_F(NodeQueries, WhetherANodeExists) {
    EXPECT_TRUE(root.DoesNodeExist(L"a"));
    EXPECT_TRUE(root.DoesNodeExist(L"a/@id"));
    EXPECT_FALSE(root.DoesNodeExist(L"x"));
    for (wchar_t const* const path : badPaths) {
        EXPECT_FALSE(root.DoesNodeExist(path)) << utf8(path);
    }
}

TEST_F(NodeQueries, TheFirstNodeInDocumentOrderIsFound) {
    WXmlNode node;
    EXPECT_TRUE(root.GetNode(L"a/b | a", node));
    EXPECT_EQ(utf8(node.Attribute(L"@id").GetString()), "1");
    EXPECT_EQ(utf8(root.GetNode(L"a[last()]/b").Value().GetString()), "two");
    EXPECT_TRUE(root.GetNodeNoThrow(L"a") == node);
}

TEST_F(NodeQueries, PathsStartAtTheNode) {
    WXmlNode const a = root.GetNode(L"a[2]");
    EXPECT_EQ(utf8(a.GetNode(L"b").Value().GetString()), "two");
    EXPECT_FALSE(a.DoesNodeExist(L"a"));
    EXPECT_TRUE(a.GetNode(L"..") == root);
    EXPECT_TRUE(a.GetNode(L"/r") == root);
    EXPECT_TRUE(a.GetNode(L".") == a);
}

TEST_F(NodeQueries, EveryKindOfNodeIsFound) {
    EXPECT_EQ(utf8(root.GetNode(L"a/@id").GetName()), "id");
    EXPECT_EQ(utf8(root.GetNode(L"a/b/text()").GetName()), "#text");
    EXPECT_EQ(utf8(root.GetNode(L"comment()").GetName()), "#comment");
    EXPECT_EQ(utf8(root.GetNode(L"/").GetName()), "#document");
}

TEST_F(NodeQueries, AMissIsFalseAndLeavesTheResultAlone) {
    WXmlNode node = before;
    EXPECT_FALSE(root.GetNode(L"x", node));
    EXPECT_TRUE(node == before);
    for (wchar_t const* const path : badPaths) {
        EXPECT_FALSE(root.GetNode(path, node)) << utf8(path);
        EXPECT_TRUE(node == before) << utf8(path);
    }
    EXPECT_FALSE(WXmlNode{}.GetNode(L"a", node));
    EXPECT_TRUE(node == before);
}

TEST_F(NodeQueries, TheResultMayBeTheHandleThatIsAsked) {
    WXmlNode node = root;
    EXPECT_TRUE(node.GetNode(L"a[2]", node));
    EXPECT_TRUE(node == before);
}

TEST_F(NodeQueries, ResultsShareNoHandle) {
    WXmlNode node = before;
    WXmlNode const copy = node;
    EXPECT_TRUE(root.GetNode(L"a[1]", node));
    EXPECT_TRUE(copy == before);
}

TEST_F(NodeQueries, AMissThrowsZeroWhereANodeIsPromised) {
    EXPECT_EQ(intOf([&] { return root.GetNode(L"x"); }), 0);
    EXPECT_EQ(intOf([&] { return root.GetNode(L"a"); }), std::nullopt);
}

TEST_F(NodeQueries, AMissIsAnEmptyNodeWhereNothingIsThrownForIt) {
    EXPECT_FALSE(root.GetNodeNoThrow(L"x").IsValid());
    EXPECT_TRUE(root.GetNodeNoThrow(L"x") == WXmlNode{});
}

TEST_F(NodeQueries, BadPathsAreRaisedWithTheEnginesWords) {
    for (wchar_t const* const path : badPaths) {
        EXPECT_EQ(codeOf([&] { return root.GetNode(path); }), E_FAIL) << utf8(path);
        EXPECT_EQ(codeOf([&] { return root.GetNodeNoThrow(path); }), E_FAIL) << utf8(path);
        EXPECT_EQ(codeOf([&] { return root.GetNodes(path); }), E_FAIL) << utf8(path);
        EXPECT_EQ(codeOf([&] { return root.GetNodes(path, true); }), E_FAIL) << utf8(path);
        EXPECT_NE(descriptionOf([&] { return root.GetNode(path); }), "") << utf8(path);
        EXPECT_NE(descriptionOf([&] { return root.GetNodes(path); }), "") << utf8(path);
    }
    EXPECT_NE(descriptionOf([&] { return root.GetNode(L"abc["); }).find("column"),
              std::string::npos);
}

TEST_F(NodeQueries, AnEmptyHandleIsRaised) {
    WXmlNode const empty;
    EXPECT_EQ(codeOf([&] { return empty.GetNode(L"a"); }), E_POINTER);
    EXPECT_EQ(codeOf([&] { return empty.GetNodeNoThrow(L"a"); }), E_POINTER);
    EXPECT_EQ(codeOf([&] { return empty.GetNodes(L"a"); }), E_POINTER);
    EXPECT_EQ(codeOf([&] { return empty.GetNodes(L"a", false); }), E_POINTER);
}

TEST_F(NodeQueries, AllNodesInDocumentOrder) {
    WXmlNodeList nodes;
    EXPECT_TRUE(root.GetNodes(L"a/b | a", nodes));
    ASSERT_EQ(nodes.Count(), 4);
    EXPECT_EQ(utf8(nodes.Node(0).GetName()), "a");
    EXPECT_EQ(utf8(nodes.Node(1).GetName()), "b");
    EXPECT_EQ(root.GetNodes(L"a").Count(), 2);
    EXPECT_EQ(root.GetNodes(L"a", true).Count(), 2);
    EXPECT_EQ(root.GetNodes(L"a", false).Count(), 2);
}

TEST_F(NodeQueries, NoNodesAreFalseAndAnEmptyList) {
    WXmlNodeList nodes = root.GetNodes(L"a");
    EXPECT_FALSE(root.GetNodes(L"x", nodes));
    EXPECT_EQ(nodes.Count(), 0);
    EXPECT_EQ(root.GetNodes(L"x").Count(), 0);
    EXPECT_EQ(root.GetNodes(L"x", true).Count(), 0);
}

TEST_F(NodeQueries, AFailingQueryLeavesTheListAlone) {
    WXmlNodeList nodes = root.GetNodes(L"a");
    for (wchar_t const* const path : badPaths) {
        EXPECT_FALSE(root.GetNodes(path, nodes)) << utf8(path);
        EXPECT_EQ(nodes.Count(), 2) << utf8(path);
    }
    EXPECT_FALSE(WXmlNode{}.GetNodes(L"a", nodes));
    EXPECT_EQ(nodes.Count(), 2);
}

TEST_F(NodeQueries, APathPutTogetherFromPartsIsAskedByItsString) {
    WXPath path{L"a/b"};
    ASSERT_TRUE(path.AddFilterClause(L"../@id='2'"));
    EXPECT_EQ(utf8(root.GetNode(path).Value().GetString()), "two");
    EXPECT_EQ(utf8(root.GetNode(path.GetRoot()).Attribute(L"@id").GetString()), "2");
}

TEST_F(NodeQueries, NothingIsRemembered) {
    WXPath const path{L"a[@id='3']"};
    EXPECT_FALSE(root.DoesNodeExist(path));
    before.Attribute(L"@id").SetInt(3);
    EXPECT_TRUE(root.GetNode(path) == before);
}

} // namespace
