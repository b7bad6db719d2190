#include "EngineTest.h"

namespace {

TEST(DocumentQueries, ThePathStartsAtTheDocument) {
    WXmlDoc const document = loaded(L"<a><b/><b/></a>");
    WXmlNodeList nodes;
    EXPECT_TRUE(document.GetNodes(L"a/b", nodes));
    EXPECT_EQ(nodes.Count(), 2);
    EXPECT_EQ(document.GetNodes(L"/a").Count(), 1);
}

TEST(DocumentQueries, NothingFoundIsFalseAndAnEmptyList) {
    WXmlDoc const document = loaded(L"<a><b/></a>");
    WXmlNodeList nodes = document.GetNodes(L"a/b");
    EXPECT_FALSE(document.GetNodes(L"a/c", nodes));
    EXPECT_EQ(nodes.Count(), 0);
    EXPECT_EQ(document.GetNodes(L"a/c").Count(), 0);
}

TEST(DocumentQueries, ABadPathIsFalseAndLeavesTheListAlone) {
    WXmlDoc const document = loaded(L"<a><b/></a>");
    WXmlNodeList nodes = document.GetNodes(L"a/b");
    for (wchar_t const* const path : {L"", L"a[", L"1", L"p:a", L"a//", L"count(a)"}) {
        EXPECT_FALSE(document.GetNodes(path, nodes)) << utf8(path);
        EXPECT_EQ(nodes.Count(), 1) << utf8(path);
        EXPECT_EQ(document.GetNodes(path).Count(), 0) << utf8(path);
    }
}

TEST(DocumentQueries, AnEmptyHandleIsFalseAndLeavesTheListAlone) {
    WXmlNodeList nodes = loaded(L"<a><b/></a>").GetNodes(L"a/b");
    EXPECT_FALSE(WXmlDoc{}.GetNodes(L"a", nodes));
    EXPECT_EQ(nodes.Count(), 1);
    EXPECT_EQ(WXmlDoc{}.GetNodes(L"a").Count(), 0);
}

TEST(DocumentQueries, APathPutTogetherFromPartsIsAskedByItsString) {
    WXmlDoc const document = loaded(L"<a><b x='1'/><b x='2'/></a>");
    WXPath path{L"a/b"};
    ASSERT_TRUE(path.AddFilterClause(L"@x='2'"));
    EXPECT_EQ(document.GetNodes(path).Count(), 1);
}

TEST(DocumentQueries, PrefixesWorkAfterTheyWereSet) {
    WXmlDoc document = loaded(L"<x:a xmlns:x='urn:a' xmlns:y='urn:b'><y:b/></x:a>");
    WXmlNodeList nodes;
    EXPECT_FALSE(document.GetNodes(L"p:a/q:b", nodes));
    document.SetSelectionNamespaces(L"xmlns:p='urn:a' xmlns:q=\"urn:b\"");
    EXPECT_TRUE(document.GetNodes(L"p:a/q:b", nodes));
    EXPECT_FALSE(document.GetNodes(L"a", nodes)) << "no prefix is no namespace";
    EXPECT_TRUE(document.GetRootNode().DoesNodeExist(L"q:b")) << "nodes use them, too";
}

TEST(DocumentQueries, PrefixesAreLostByLoading) {
    wchar_t const* const xml = L"<a xmlns='urn:a'/>";
    WXmlDoc document = loaded(xml);
    document.SetSelectionNamespaces(L"xmlns:p='urn:a'");
    EXPECT_EQ(document.GetNodes(L"p:a").Count(), 1);
    ASSERT_TRUE(document.LoadFromString(xml));
    EXPECT_EQ(document.GetNodes(L"p:a").Count(), 0);
    document.SetSelectionNamespaces(L"xmlns:p='urn:a'");
    EXPECT_EQ(document.GetNodes(L"p:a").Count(), 1);
}

TEST(DocumentQueries, SettingPrefixesOfAnEmptyHandleDoesNothing) {
    WXmlDoc document;
    EXPECT_EQ(codeOf([&] { document.SetSelectionNamespaces(L"xmlns:p='urn:a'"); }), S_OK);
    EXPECT_EQ(codeOf([&] { document.SetSelectionNamespaces(L"nonsense"); }), S_OK);
}

TEST(DocumentQueries, BadPrefixDeclarationsAreRaised) {
    WXmlDoc document = loaded(L"<a/>");
    for (wchar_t const* const bad : {L"p='urn:a'", L"xmlns:p=urn:a", L"xmlns:p='urn:a", L"x"}) {
        EXPECT_EQ(codeOf([&] { document.SetSelectionNamespaces(bad); }), E_FAIL) << utf8(bad);
        EXPECT_NE(descriptionOf([&] { document.SetSelectionNamespaces(bad); }), "") << utf8(bad);
    }
}

} // namespace
