#include "EngineTest.h"

namespace {

TEST(DocumentClone, CopiesTheRootAndAllInIt) {
    WXmlDoc const source =
        loaded(L"<a xmlns:p='urn:p' n='1'><p:b>text<![CDATA[x]]></p:b><!--c--></a>");
    WXmlDoc const clone = source.Clone();
    EXPECT_STREQ(clone.SaveToString(), source.SaveToString());
    EXPECT_FALSE(clone == source);
    EXPECT_TRUE(clone.IsLoaded());
}

TEST(DocumentClone, SharesNothing) {
    WXmlDoc const source = loaded(L"<a><b/></a>");
    WXmlDoc clone = source.Clone();
    clone.GetRootNode().Attribute(L"@n").SetInt(1);
    source.GetRootNode().Attribute(L"@m").SetInt(2);
    EXPECT_STREQ(clone.SaveToString(), L"<a n=\"1\"><b/></a>\n");
    EXPECT_STREQ(source.SaveToString(), L"<a m=\"2\"><b/></a>\n");
    EXPECT_FALSE(clone.GetRootNode() == source.GetRootNode());
}

TEST(DocumentClone, OutlivesItsSource) {
    WXmlDoc clone;
    {
        WXmlDoc const source = loaded(L"<a><b/></a>");
        clone = source.Clone();
    }
    EXPECT_STREQ(clone.SaveToString(), L"<a><b/></a>\n");
}

TEST(DocumentClone, LeavesOutWhatStandsBesideTheRoot) {
    WXmlDoc const source =
        loaded(L"<?xml version='1.0' encoding='UTF-16'?><!--before--><?p i?><a/><!--behind-->");
    EXPECT_STREQ(source.Clone().SaveToString(), L"<a/>\n");
}

TEST(DocumentClone, LeavesOutSettings) {
    WXmlDoc source{true};
    ASSERT_TRUE(source.LoadFromString(L"<p:a xmlns:p='urn:p'> <b/> </p:a>"));
    source.SetSelectionNamespaces(L"xmlns:q='urn:p'");
    WXmlDoc clone = source.Clone();
    EXPECT_EQ(source.GetNodes(L"q:a").Count(), 1);
    EXPECT_EQ(clone.GetNodes(L"q:a").Count(), 0);
    EXPECT_EQ(clone.GetNodes(L"*/text()").Count(), 2) << "white space is content by now";
    ASSERT_TRUE(clone.LoadFromString(L"<a> <b/> </a>"));
    EXPECT_EQ(clone.GetNodes(L"*/text()").Count(), 0);
}

TEST(DocumentClone, WithoutARootThereIsNone) {
    EXPECT_FALSE(WXmlDoc{}.Clone().IsLoaded());
    EXPECT_TRUE(WXmlDoc{}.Clone() == WXmlDoc{}) << "an empty handle";
    WXmlDoc unloaded;
    EXPECT_FALSE(unloaded.LoadFromString(L""));
    WXmlDoc const clone = unloaded.Clone();
    EXPECT_FALSE(clone.IsLoaded());
    EXPECT_TRUE(clone == WXmlDoc{});
}

TEST(DocumentClone, EveryFailureGivesAnEmptyHandle) {
    auto const behaviour = std::make_shared<fake::Behaviour>();
    fake::Document* engine = nullptr;
    WXmlDoc const document{fake::make<fake::Document, IXMLDOMDocument3>(behaviour, engine)};
    EXPECT_TRUE(document.Clone() == WXmlDoc{}) << "no root";
    auto const ofRoot = std::make_shared<fake::Behaviour>();
    fake::Element* root = nullptr;
    engine->root = fake::make<fake::Element, IXMLDOMElement>(ofRoot, root);
    EXPECT_TRUE(document.Clone() == WXmlDoc{}) << "a root that cannot be imported";
    behaviour->codes["documentElement"] = E_FAIL;
    EXPECT_TRUE(document.Clone() == WXmlDoc{});
    EXPECT_EQ(behaviour->calls, (std::vector<std::string>(3, "documentElement")));
}

} // namespace
