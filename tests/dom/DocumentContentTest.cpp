#include "EngineTest.h"

namespace {

TEST(DocumentContent, TheTextOfTheWholeDocument) {
    WXmlDoc const document = loaded(L"<!--c--><a b='1'><c/></a>");
    EXPECT_EQ(utf8(document.SaveToString()), "<!--c-->\n<a b=\"1\"><c/></a>\n");
}

TEST(DocumentContent, AnEmptyHandleHasNoText) {
    EXPECT_EQ(codeOf([] { return WXmlDoc{}.SaveToString(); }), E_POINTER);
}

TEST(DocumentContent, ADocumentWithoutRootIsNotLoaded) {
    WXmlDoc document;
    EXPECT_FALSE(document.LoadFromString(L""));
    EXPECT_FALSE(document.IsLoaded());
    EXPECT_FALSE(document.GetRootNode().IsValid());
    EXPECT_TRUE(document.SaveToString().IsEmpty());
}

TEST(DocumentContent, TheRootIsTheElementWhateverStandsBeforeIt) {
    WXmlDoc document = loaded(L"<?xml version='1.0'?><!--c--><?p i?><a/>");
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "a");
    WXmlDoc const& constant = document;
    EXPECT_TRUE(constant.GetRootNode() == document.GetRootNode());
}

TEST(DocumentContent, AnEmptyHandleThrowsOneForItsRootAndForNewNodes) {
    EXPECT_EQ(intOf([] { return WXmlDoc{}.GetRootNode(); }), 1);
    EXPECT_EQ(intOf([] {
                  WXmlDoc const constant;
                  return constant.GetRootNode();
              }),
              1);
    EXPECT_EQ(intOf([] { return WXmlDoc{}.CreateNode(L"a", nullptr); }), 1);
}

TEST(DocumentContent, ANewElementIsNotInTheTree) {
    WXmlDoc const document = loaded(L"<a/>");
    WXmlNode const node = document.CreateNode(L"b", nullptr);
    EXPECT_EQ(utf8(node.GetName()), "b");
    EXPECT_EQ(utf8(node.GetXML()), "<b/>") << "no namespace";
    EXPECT_FALSE(node.GetParentNode().IsValid());
    EXPECT_TRUE(node.GetOwnerDocument() == document);
    EXPECT_EQ(document.GetRootNode().GetNumChildren(), 0);
}

TEST(DocumentContent, ANewElementInANamespace) {
    WXmlDoc const document = loaded(L"<a/>");
    EXPECT_EQ(utf8(document.CreateNode(L"p:b", L"urn:p").GetXML()), "<p:b xmlns:p=\"urn:p\"/>");
    EXPECT_EQ(utf8(document.CreateNode(L"b", L"").GetXML()), "<b/>");
}

TEST(DocumentContent, BadNamesForNewElementsAreRaised) {
    WXmlDoc const document = loaded(L"<a/>");
    for (wchar_t const* const name : {L"", L"1", L"a b", L"a:b:c", L"<"}) {
        EXPECT_EQ(codeOf([&] { return document.CreateNode(name, nullptr); }), E_FAIL) << utf8(name);
        EXPECT_NE(descriptionOf([&] { return document.CreateNode(name, nullptr); }), "");
    }
    EXPECT_TRUE(FAILED(codeOf([&] { return document.CreateNode(nullptr, nullptr); })));
}

} // namespace
