#include "EngineTest.h"

namespace {

std::vector<std::string> attributesOf(WXmlNode const& node) {
    std::vector<CString> names{L"left over"};
    node.GetAttributes(names);
    std::vector<std::string> result;
    for (CString const& name : names)
        result.push_back(utf8(name));
    return result;
}

using Names = std::vector<std::string>;

TEST(NodeContent, NamesAreQualified) {
    WXmlDoc const document =
        loaded(L"<p:a xmlns:p='urn:p' p:b='1'>text<![CDATA[x]]><?go on?></p:a>");
    WXmlNode const root = document.GetRootNode();
    EXPECT_EQ(utf8(root.GetName()), "p:a");
    EXPECT_EQ(utf8(root.GetNode(L"@*").GetName()), "p:b");
    EXPECT_EQ(utf8(root.GetNode(L"text()[1]").GetName()), "#text");
    EXPECT_EQ(utf8(root.GetNode(L"text()[2]").GetName()), "#cdata-section");
    EXPECT_EQ(utf8(root.GetNode(L"processing-instruction()").GetName()), "go");
}

TEST(NodeContent, MarkupOfTheNodeAndWhatIsInIt) {
    WXmlDoc const document = loaded(L"<a><b c='&lt;'>x &amp; y<d/></b></a>");
    WXmlNode const b = nodeAt(document, L"b");
    EXPECT_EQ(utf8(b.GetXML()), "<b c=\"&lt;\">x &amp; y<d/></b>");
    EXPECT_EQ(utf8(b.SaveToString()), utf8(b.GetXML()));
    EXPECT_EQ(utf8(nodeAt(document, L"b/text()").GetXML()), "x &amp; y");
}

TEST(NodeContent, AnEmptyHandleRaisesForItsMarkupButSavesToNothing) {
    EXPECT_EQ(codeOf([] { return WXmlNode{}.GetXML(); }), E_POINTER);
    EXPECT_TRUE(WXmlNode{}.SaveToString().IsEmpty());
}

TEST(NodeContent, AttributesInTheirOrder) {
    WXmlDoc const document = loaded(L"<a z='1' xmlns:p='urn:p' p:y='2' x='3'/>");
    EXPECT_EQ(attributesOf(document.GetRootNode()), (Names{"z", "xmlns:p", "p:y", "x"}));
}

TEST(NodeContent, NoAttributesAreNoNames) {
    EXPECT_EQ(attributesOf(loaded(L"<a/>").GetRootNode()), Names{});
}

TEST(NodeContent, AttributesOfWhatIsNoElementAreRaisedAndTheNamesCleared) {
    WXmlDoc const document = loaded(L"<a b='1'>text<!--c--></a>");
    for (wchar_t const* const path : {L"text()", L"comment()", L"@b", L"/"}) {
        std::vector<CString> names{L"left over"};
        EXPECT_EQ(codeOf([&] { nodeAt(document, path).GetAttributes(names); }), E_POINTER)
            << utf8(path);
        EXPECT_TRUE(names.empty()) << utf8(path);
    }
    std::vector<CString> names{L"left over"};
    EXPECT_EQ(codeOf([&] { WXmlNode{}.GetAttributes(names); }), E_POINTER);
    EXPECT_TRUE(names.empty());
}

TEST(NodeContent, AccessorsKeepTheNode) {
    WXmlValueAccessor value = loaded(L"<a b='1'>text</a>").GetRootNode().Value();
    EXPECT_EQ(utf8(value.GetString()), "text");
    WXmlValueAccessor attribute = loaded(L"<a b='1'/>").GetRootNode().Attribute(L"@b");
    EXPECT_EQ(attribute.GetInt(), 1);
}

TEST(NodeContent, AnAttributeIsNamedJustAsItIsPassed) {
    WXmlNode const node = loaded(L"<a b='1' ab='2'/>").GetRootNode();
    EXPECT_EQ(node.Attribute(L"@b").GetInt(), 1);
    EXPECT_EQ(node.Attribute(L"ab").GetInt(), 1) << "the first character is dropped unseen";
    EXPECT_EQ(node.Attribute(L"@ab").GetInt(), 2);
    EXPECT_FALSE(node.Attribute(nullptr).Exists());
}

} // namespace
