#include "EngineTest.h"

namespace {

WXmlDoc sheet(std::wstring const& content) {
    std::wstring const text =
        L"<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
        content + L"</xsl:stylesheet>";
    return loaded(text.c_str());
}

WXmlDoc swapping() {
    return sheet(
        L"<xsl:output omit-xml-declaration='yes'/><xsl:template match='/a'><b><xsl:copy-of "
        L"select='*'/></b></xsl:template>");
}

TEST(DocumentTransformation, TheResultIsTheNewContent) {
    WXmlDoc document = loaded(L"<a><c n='1'/></a>");
    WXmlDoc style = swapping();
    EXPECT_TRUE(document.ApplyXSLT(style));
    EXPECT_STREQ(document.SaveToString(), L"<b><c n=\"1\"/></b>\n");
    EXPECT_TRUE(document.IsLoaded());
    EXPECT_TRUE(style.IsLoaded()) << "the stylesheet stays what it is";
}

TEST(DocumentTransformation, CopiesSeeItAndClonesDoNot) {
    WXmlDoc document = loaded(L"<a><c/></a>");
    WXmlDoc const copy = document;
    WXmlDoc const clone = document.Clone();
    WXmlDoc style = swapping();
    EXPECT_TRUE(document.ApplyXSLT(style));
    EXPECT_TRUE(copy == document);
    EXPECT_STREQ(copy.SaveToString(), L"<b><c/></b>\n");
    EXPECT_STREQ(clone.SaveToString(), L"<a><c/></a>\n");
}

TEST(DocumentTransformation, OldNodesStayUsable) {
    WXmlDoc document = loaded(L"<a><c n='1'/><c n='2'/></a>");
    WXmlNode root = document.GetRootNode();
    WXmlNodeList const nodes = document.GetNodes(L"a/c");
    WXmlDoc style = swapping();
    EXPECT_TRUE(document.ApplyXSLT(style));
    EXPECT_STREQ(root.GetXML(), L"<a><c n=\"1\"/><c n=\"2\"/></a>");
    EXPECT_EQ(nodes.Count(), 2);
    EXPECT_EQ(nodes.Node(1).Attribute(L"@n").GetInt(0), 2);
    nodes.Node(0).Attribute(L"@n").SetInt(7);
    EXPECT_STREQ(root.GetXML(), L"<a><c n=\"7\"/><c n=\"2\"/></a>");
    EXPECT_STREQ(document.SaveToString(), L"<b><c n=\"1\"/><c n=\"2\"/></b>\n");
}

TEST(DocumentTransformation, AgainAndAgainByOneStylesheet) {
    WXmlDoc style = sheet(L"<xsl:output omit-xml-declaration='yes'/><xsl:template match='/*'><n>"
                          L"<xsl:value-of select='. + 1'/></n></xsl:template>");
    WXmlDoc document = loaded(L"<n>1</n>");
    for (int i = 0; i != 5; ++i)
        EXPECT_TRUE(document.ApplyXSLT(style));
    EXPECT_EQ(document.GetRootNode().Value().GetInt(0), 6);
    WXmlDoc other = loaded(L"<n>10</n>");
    EXPECT_TRUE(other.ApplyXSLT(style));
    EXPECT_EQ(other.GetRootNode().Value().GetInt(0), 11);
    style.GetRootNode().GetNode(L"*[2]/n/*").Attribute(L"@select").SetString(L"'changed'");
    EXPECT_TRUE(other.ApplyXSLT(style));
    EXPECT_STREQ(other.GetRootNode().Value().GetString(), L"changed");
}

TEST(DocumentTransformation, ByItself) {
    WXmlDoc self = sheet(L"<xsl:output omit-xml-declaration='yes'/><xsl:template match='/'><n>"
                         L"<xsl:value-of select='count(//*)'/></n></xsl:template>");
    EXPECT_TRUE(self.ApplyXSLT(self));
    EXPECT_STREQ(self.SaveToString(), L"<n>5</n>\n");
    EXPECT_FALSE(self.ApplyXSLT(self)) << "no stylesheet any more";
}

TEST(DocumentTransformation, FailuresLeaveTheContentAlone) {
    for (wchar_t const* const content :
         {L"<xsl:template match='/'><a/><b/></xsl:template>",
          L"<xsl:template match='/'>x</xsl:template>", L"<xsl:template match='['/>",
          L"<xsl:template match='/'><xsl:call-template name='t'/>"
          L"</xsl:template><xsl:template name='t'><xsl:call-template "
          L"name='t'/></xsl:template>",
          L"<xsl:template match='/'><a/><xsl:message terminate='yes'/></xsl:template>"}) {
        WXmlDoc document = loaded(L"<a><c/></a>");
        WXmlNode const root = document.GetRootNode();
        WXmlDoc style = sheet(content);
        EXPECT_FALSE(document.ApplyXSLT(style)) << utf8(content);
        EXPECT_STREQ(document.SaveToString(), L"<a><c/></a>\n") << utf8(content);
        EXPECT_TRUE(document.GetRootNode() == root) << utf8(content);
    }
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc noStylesheet = loaded(L"<a/>");
    EXPECT_FALSE(document.ApplyXSLT(noStylesheet));
    EXPECT_STREQ(document.SaveToString(), L"<a/>\n");
}

TEST(DocumentTransformation, EmptyHandles) {
    WXmlDoc empty;
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc style = swapping();
    EXPECT_FALSE(empty.ApplyXSLT(style));
    EXPECT_FALSE(document.ApplyXSLT(empty));
    EXPECT_FALSE(empty.ApplyXSLT(empty));
    WXmlDoc unloaded;
    EXPECT_FALSE(unloaded.LoadFromString(L"<"));
    EXPECT_FALSE(document.ApplyXSLT(unloaded));
    EXPECT_STREQ(document.SaveToString(), L"<a/>\n");
}

TEST(DocumentTransformation, AResultWithoutElementIsAResult) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc style = sheet(L"<xsl:output omit-xml-declaration='yes'/><xsl:template match='/'>"
                          L"<xsl:comment>c</xsl:comment></xsl:template>");
    EXPECT_TRUE(document.ApplyXSLT(style));
    EXPECT_FALSE(document.IsLoaded());
    EXPECT_STREQ(document.SaveToString(), L"<!--c-->\n");
}

struct Output {
    wchar_t const* output;
    wchar_t const* result;
};

TEST(DocumentTransformation, TheDeclarationIsThatOfXslOutput) {
    for (Output const& row : {
             Output{L"", L"<?xml version=\"1.0\"?>\n<r/>\n"},
             Output{L"<xsl:output encoding='UTF-16'/>",
                    L"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<r/>\n"},
             Output{L"<xsl:output encoding='no-such-thing'/>", L"<?xml version=\"1.0\"?>\n<r/>\n"},
             Output{L"<xsl:output standalone='yes'/>",
                    L"<?xml version=\"1.0\" standalone=\"yes\"?>\n<r/>\n"},
             Output{L"<xsl:output omit-xml-declaration='yes'/>", L"<r/>\n"},
             Output{L"<xsl:output method='html'/>", L"<r/>\n"},
             Output{L"<xsl:output doctype-system='s'/>", L"<?xml version=\"1.0\"?>\n<r/>\n"},
         }) {
        WXmlDoc document = loaded(L"<a/>");
        WXmlDoc style =
            sheet(std::wstring{row.output} + L"<xsl:template match='/'><r/></xsl:template>");
        EXPECT_TRUE(document.ApplyXSLT(style)) << utf8(row.output);
        EXPECT_STREQ(document.SaveToString(), row.result) << utf8(row.output);
    }
}

TEST(DocumentTransformation, IndentedOutputIsLaidOutWhenItIsWritten) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc style = sheet(L"<xsl:output indent='yes' omit-xml-declaration='yes'/><xsl:template "
                          L"match='/'><r><a><b/></a><m>x<b/></m><s xml:space='preserve'><b/></s>"
                          L"</r></xsl:template>");
    EXPECT_TRUE(document.ApplyXSLT(style));
    EXPECT_STREQ(document.SaveToString(),
                 L"<r>\n\t<a>\n\t\t<b/>\n\t</a>\n\t<m>x<b/></m>\n\t<s xml:space=\"preserve\"><b/>"
                 L"</s>\n</r>\n");
    EXPECT_EQ(document.GetRootNode().GetNodes(L"node()").Count(), 3) << "nothing was added";
}

TEST(DocumentTransformation, CdataSectionsAsAskedFor) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlDoc style = sheet(L"<xsl:output cdata-section-elements='c' omit-xml-declaration='yes'/>"
                          L"<xsl:template match='/'><r><c>&lt;</c><d>&lt;</d></r></xsl:template>");
    EXPECT_TRUE(document.ApplyXSLT(style));
    EXPECT_STREQ(document.SaveToString(), L"<r><c><![CDATA[<]]></c><d>&lt;</d></r>\n");
}

class TransformationCalls : public testing::Test {
protected:
    std::shared_ptr<fake::Behaviour> ofDocument = std::make_shared<fake::Behaviour>();
    std::shared_ptr<fake::Behaviour> ofStyle = std::make_shared<fake::Behaviour>();
    fake::Document* engine = nullptr;
    fake::Document* styleEngine = nullptr;
    WXmlDoc document{fake::make<fake::Document, IXMLDOMDocument3>(ofDocument, engine)};
    WXmlDoc style{fake::make<fake::Document, IXMLDOMDocument3>(ofStyle, styleEngine)};
};

TEST_F(TransformationCalls, TheDocumentIsSourceAndOutput) {
    EXPECT_TRUE(document.ApplyXSLT(style));
    EXPECT_EQ(ofStyle->calls, std::vector<std::string>{"setProperty"});
    EXPECT_EQ(ofStyle->property, L"AllowDocumentFunction");
    EXPECT_EQ(ofStyle->propertyKind, VT_BOOL);
    EXPECT_EQ(ofDocument->calls, std::vector<std::string>{"transformNodeToObject"});
    EXPECT_EQ(engine->passedStylesheet, styleEngine);
    EXPECT_TRUE(engine->passedOutput.vt == VT_UNKNOWN || engine->passedOutput.vt == VT_DISPATCH);
    engine->passedOutput = _variant_t{}; // it refers to itself
}

TEST_F(TransformationCalls, EveryFailureIsFalse) {
    ofStyle->codes["setProperty"] = E_FAIL;
    EXPECT_FALSE(document.ApplyXSLT(style));
    EXPECT_TRUE(ofDocument->calls.empty()) << "nothing is transformed then";
    ofStyle->codes.clear();
    ofDocument->codes["transformNodeToObject"] = E_OUTOFMEMORY;
    EXPECT_FALSE(document.ApplyXSLT(style));
    ofDocument->codes["transformNodeToObject"] = S_FALSE;
    EXPECT_TRUE(document.ApplyXSLT(style)) << "success codes are successes";
    engine->passedOutput = _variant_t{};
}

} // namespace
