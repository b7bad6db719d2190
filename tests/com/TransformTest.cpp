// Transforming through the engine's interface.
#include "Objects.h"

#include <string>

namespace tibxml::com::test {

namespace {

std::wstring sheetWith(std::wstring const& content) {
    return L"<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
           content + L"</xsl:stylesheet>";
}

Document sheet(std::wstring const& content) {
    return documentOf(sheetWith(content).c_str());
}

HRESULT transform(IXMLDOMNode* source, IXMLDOMNode* stylesheet, IUnknown* target) {
    return source->transformNodeToObject(stylesheet, variantOf(target));
}

class Transform : public testing::Test {
protected:
    Document source = documentOf(L"<d><a>1</a><a>2</a></d>");
    Document target = documentOf(L"<old><node/></old>");

    // The error text of a transformation that has to fail and to change nothing.
    std::string failure(std::wstring const& content) {
        takeErrorText();
        EXPECT_EQ(transform(source, sheet(content), target), E_FAIL) << utf8(content);
        EXPECT_EQ(xmlOf(target), "<old><node/></old>\n") << utf8(content);
        EXPECT_EQ(xmlOf(source), "<d><a>1</a><a>2</a></d>\n") << utf8(content);
        return takeErrorText();
    }
};

} // namespace

TEST_F(Transform, TheResultReplacesTheContentOfTheSameObject) {
    Node const old = nodeAt(target, L"old/node");
    List const nodes = nodesAt(target, L"//*");
    EXPECT_EQ(transform(source, sheet(L"<xsl:template match='/'><r/></xsl:template>"), target),
              S_OK);
    EXPECT_EQ(xmlOf(target), "<?xml version=\"1.0\"?>\n<r/>\n");
    EXPECT_EQ(xmlOf(old), "<node/>");
    EXPECT_EQ(lengthOf(nodes.get()), 2);
    EXPECT_TRUE(isSame(itemOf(nodes.get(), 1), old));
    Node parent;
    EXPECT_EQ(old->get_parentNode(parent.out()), S_OK) << "it keeps its element";
    EXPECT_EQ(nameOf(parent), "old");
}

TEST_F(Transform, ADocumentIntoItself) {
    Node const a = nodeAt(source, L"d/a[2]");
    EXPECT_EQ(transform(source,
                        sheet(L"<xsl:template match='/'><r><xsl:value-of select='//a[2]'/></r>"
                              L"</xsl:template>"),
                        source),
              S_OK);
    EXPECT_EQ(xmlOf(source), "<?xml version=\"1.0\"?>\n<r>2</r>\n");
    EXPECT_EQ(textOf(a), "2");
    EXPECT_EQ(setText(a, L"still an element"), S_OK);
    EXPECT_EQ(xmlOf(source), "<?xml version=\"1.0\"?>\n<r>2</r>\n");
}

TEST_F(Transform, AStylesheetOfItself) {
    Document const self =
        sheet(L"<xsl:template match='/'><r><xsl:value-of select='count(//*)'/></r>"
              L"</xsl:template>");
    EXPECT_EQ(transform(self, self, self), S_OK);
    EXPECT_EQ(xmlOf(self), "<?xml version=\"1.0\"?>\n<r>4</r>\n");
    EXPECT_EQ(transform(source, self, target), E_FAIL) << "it is no stylesheet any more";
}

TEST_F(Transform, TheSourceIsNotChanged) {
    Document const spaced = newDocument();
    spaced->put_preserveWhiteSpace(VARIANT_TRUE);
    ASSERT_TRUE(loadText(spaced, L"<d> <a><![CDATA[x]]>y</a> </d>"));
    std::string const before = xmlOf(spaced);
    EXPECT_EQ(transform(spaced,
                        sheet(L"<xsl:strip-space elements='*'/><xsl:template match='/'><r>"
                              L"<xsl:copy-of select='d'/></r></xsl:template>"),
                        target),
              S_OK);
    EXPECT_EQ(xmlOf(spaced), before);
    EXPECT_EQ(xmlOf(target), "<?xml version=\"1.0\"?>\n<r><d><a>xy</a></d></r>\n");
}

TEST_F(Transform, AnElementIsADocumentOfItsOwn) {
    Document const spaces = documentOf(L"<q:r xmlns:q='urn:q'><q:a q:x='1'/><q:b/></q:r>");
    Node const a = nodeAt(spaces, L"*/*[1]");
    EXPECT_EQ(transform(a,
                        sheet(L"<xsl:template match='/'><r n='{count(//*)}'>"
                              L"<xsl:copy-of select='.'/></r></xsl:template>"),
                        target),
              S_OK);
    EXPECT_EQ(xmlOf(target),
              "<?xml version=\"1.0\"?>\n<r n=\"1\"><q:a xmlns:q=\"urn:q\" q:x=\"1\"/></r>\n");
}

TEST_F(Transform, EditedTreesAreTransformedAsTheyStand) {
    VARIANT const element = variantOf(LONG{NODE_ELEMENT});
    Node made;
    ASSERT_EQ(source->createNode(element, _bstr_t{L"p:a"}, _bstr_t{L"urn:p"}, made.out()), S_OK);
    ASSERT_EQ(nodeAt(source, L"d")->appendChild(made, nullptr), S_OK);
    ASSERT_EQ(source->createNode(element, _bstr_t{L"b"}, _bstr_t{L"urn:b"}, made.out()), S_OK);
    ASSERT_EQ(nodeAt(source, L"d")->appendChild(made, nullptr), S_OK);
    EXPECT_EQ(transform(source,
                        sheet(L"<xsl:template match='/'><xsl:copy-of select='.'/></xsl:template>"),
                        target),
              S_OK);
    EXPECT_EQ(xmlOf(target), "<?xml version=\"1.0\"?>\n<d><a>1</a><a>2</a>"
                             "<p:a xmlns:p=\"urn:p\"/><b xmlns=\"urn:b\"/></d>\n");
}

TEST_F(Transform, AChangedStylesheetIsCompiledAnew) {
    Document const style = sheet(L"<xsl:template match='/'><r>1</r></xsl:template>");
    EXPECT_EQ(transform(source, style, target), S_OK);
    EXPECT_EQ(textOf(target), "1");
    EXPECT_EQ(setText(nodeAt(style, L"//r"), L"2"), S_OK);
    EXPECT_EQ(transform(source, style, target), S_OK);
    EXPECT_EQ(textOf(target), "2");
    ASSERT_TRUE(
        loadText(style, sheetWith(L"<xsl:template match='/'><r>3</r></xsl:template>").c_str()));
    EXPECT_EQ(transform(source, style, target), S_OK);
    EXPECT_EQ(textOf(target), "3");
}

TEST_F(Transform, ASimpleStylesheet) {
    Document const style =
        documentOf(L"<r xsl:version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
                   L"<xsl:value-of select='//a[1]'/></r>");
    EXPECT_EQ(transform(source, style, target), S_OK);
    EXPECT_EQ(textOf(target), "1");
}

TEST_F(Transform, BothNamesOfNodeSet) {
    for (wchar_t const* const uri :
         {L"http://exslt.org/common", L"urn:schemas-microsoft-com:xslt"}) {
        EXPECT_EQ(transform(source,
                            sheet(std::wstring{L"<xsl:template match='/' xmlns:e='"} + uri +
                                  L"'><xsl:variable name='f'><x>7</x></xsl:variable>"
                                  L"<r><xsl:value-of select='e:node-set($f)/x'/></r>"
                                  L"</xsl:template>"),
                            target),
                  S_OK);
        EXPECT_EQ(textOf(target), "7") << utf8(uri);
    }
}

TEST_F(Transform, OtherExtensionsAreUnknown) {
    for (wchar_t const* const call :
         {L"e:object-type(1)", L"e:node-set()", L"e:node-set(1,2)", L"e:nothing()"}) {
        EXPECT_NE(failure(std::wstring{L"<xsl:template match='/' "
                                       L"xmlns:e='http://exslt.org/common'><r><xsl:value-of "
                                       L"select='"} +
                          call + L"'/></r></xsl:template>"),
                  "")
            << utf8(call);
    }
    EXPECT_NE(failure(L"<s:script xmlns:s='urn:schemas-microsoft-com:xslt' language='JScript' "
                      L"implements-prefix='u'>function f() { return 1; }</s:script>"
                      L"<xsl:template match='/' xmlns:u='urn:u'><r><xsl:value-of select='u:f()'/>"
                      L"</r></xsl:template>"),
              "");
}

TEST_F(Transform, DocumentIsRefusedUntilItIsAllowed) {
    Document const style = sheet(L"<xsl:template match='/'><r><xsl:value-of "
                                 L"select='count(document(\"/none.xml\"))'/></r></xsl:template>");
    EXPECT_EQ(transform(source, style, target), E_FAIL);
    EXPECT_NE(takeErrorText().find("/none.xml"), std::string::npos);
    VARIANT yes{};
    yes.vt = VT_BOOL;
    yes.boolVal = VARIANT_TRUE;
    EXPECT_EQ(target->setProperty(_bstr_t{L"AllowDocumentFunction"}, yes), S_OK);
    EXPECT_EQ(transform(source, style, target), E_FAIL) << "it is the stylesheet's property";
    EXPECT_EQ(style->setProperty(_bstr_t{L"AllowDocumentFunction"}, yes), S_OK);
    EXPECT_EQ(transform(source, style, target), S_OK);
    EXPECT_EQ(textOf(target), "0");
}

TEST_F(Transform, ErrorsNameTheirPlace) {
    struct {
        wchar_t const* content;
        char const* place;
        char const* word;
    } const rows[] = {
        {L"<xsl:template match='/'><r><xsl:value-of select='1 +'/></r></xsl:template>",
         "/xsl:stylesheet[1]/xsl:template[1]/r[1]/xsl:value-of[1]", "1 +"},
        {L"<xsl:template match='a['/>", "/xsl:stylesheet[1]/xsl:template[1]", "a["},
        {L"<xsl:template match='/'><xsl:nothing/></xsl:template>", "xsl:nothing[1]", "nothing"},
        {L"<xsl:template match='x'/><xsl:template match='/'><r><xsl:if test='$none'/></r>"
         L"</xsl:template>",
         "/xsl:stylesheet[1]/xsl:template[2]/r[1]/xsl:if[1]", "none"},
        {L"<xsl:template match='/'><xsl:call-template name='none'/></xsl:template>",
         "xsl:call-template[1]", "none"},
        {L"<xsl:template match='/'><r><xsl:element name='1'/></r></xsl:template>",
         "r[1]/xsl:element[1]", "1"},
        {L"<xsl:template match='/'><r><xsl:value-of select='p:f()'/></r></xsl:template>",
         "xsl:value-of[1]", "prefix p"},
        {L"<xsl:template match='/'><r><xsl:value-of select='count(1)'/></r></xsl:template>",
         "xsl:value-of[1]", "type"},
    };

    for (auto const& row : rows) {
        std::string const words = failure(row.content);
        EXPECT_NE(words.find(row.place), std::string::npos) << words;
        EXPECT_NE(words.find(row.word), std::string::npos) << words;
        EXPECT_EQ(words.find('\n'), std::string::npos) << words;
    }
}

TEST_F(Transform, AMessageMayEndIt) {
    EXPECT_EQ(failure(L"<xsl:template match='/'><r/><xsl:message terminate='yes'>enough of "
                      L"this</xsl:message></xsl:template>"),
              "enough of this");
    EXPECT_EQ(transform(source,
                        sheet(L"<xsl:template match='/'><r/><xsl:message>go on</xsl:message>"
                              L"</xsl:template>"),
                        target),
              S_OK);
}

TEST_F(Transform, WhatIsNoStylesheet) {
    for (wchar_t const* const xml :
         {L"<a/>", L"<stylesheet/>",
          L"<xsl:template xmlns:xsl='http://www.w3.org/1999/XSL/Transform'/>"}) {
        EXPECT_EQ(transform(source, documentOf(xml), target), E_FAIL) << utf8(xml);
        EXPECT_NE(takeErrorText(), "") << utf8(xml);
    }
    EXPECT_EQ(transform(source, newDocument(), target), E_FAIL);
    EXPECT_EQ(xmlOf(target), "<old><node/></old>\n");
}

TEST_F(Transform, AnEmptySourceIsASource) {
    EXPECT_EQ(
        transform(newDocument(), sheet(L"<xsl:template match='/'><r/></xsl:template>"), target),
        S_OK);
    EXPECT_EQ(xmlOf(target), "<?xml version=\"1.0\"?>\n<r/>\n");
}

TEST_F(Transform, ResultsThatAreNoDocument) {
    EXPECT_NE(failure(L"<xsl:template match='/'><a/><b/></xsl:template>").find("element"),
              std::string::npos);
    EXPECT_NE(failure(L"<xsl:template match='/'>text</xsl:template>").find("text"),
              std::string::npos);
    EXPECT_NE(failure(L"<xsl:template match='/'><a/>text</xsl:template>"), "");
    EXPECT_NE(failure(L"<xsl:output method='text'/>"), "");
    EXPECT_NE(failure(L"<xsl:output cdata-section-elements='a'/><xsl:template match='/'>x"
                      L"</xsl:template>"),
              "");
}

TEST_F(Transform, ResultsWithoutElement) {
    EXPECT_EQ(transform(source,
                        sheet(L"<xsl:template match='/'><xsl:comment>c</xsl:comment>"
                              L"<xsl:processing-instruction name='p'>d"
                              L"</xsl:processing-instruction></xsl:template>"),
                        target),
              S_OK);
    EXPECT_EQ(xmlOf(target), "<?xml version=\"1.0\"?>\n<!--c-->\n<?p d?>\n");
    Ptr<IXMLDOMElement> root;
    EXPECT_EQ(target->get_documentElement(root.out()), S_FALSE);
    EXPECT_EQ(transform(source, sheet(L"<xsl:template match='/'/>"), target), S_OK);
    EXPECT_EQ(xmlOf(target), "<?xml version=\"1.0\"?>\n");
    EXPECT_EQ(transform(source,
                        sheet(L"<xsl:output omit-xml-declaration='yes'/><xsl:template match='/'> "
                              L"<xsl:text>&#10;</xsl:text></xsl:template>"),
                        target),
              S_OK);
    EXPECT_EQ(xmlOf(target), "");
}

TEST_F(Transform, EndlessRecursionFails) {
    EXPECT_NE(failure(L"<xsl:template match='/'><xsl:call-template name='t'/></xsl:template>"
                      L"<xsl:template name='t'><xsl:call-template name='t'/></xsl:template>"),
              "");
    EXPECT_NE(failure(L"<xsl:template match='/'><xsl:apply-templates select='/'/></xsl:template>"),
              "");
    EXPECT_NE(failure(L"<xsl:template match='*|/'><r><xsl:for-each select='.'><xsl:choose>"
                      L"<xsl:when test='true()'><e><xsl:if test='1'><xsl:copy>"
                      L"<xsl:apply-templates select='.'/></xsl:copy></xsl:if></e></xsl:when>"
                      L"</xsl:choose></xsl:for-each></r></xsl:template>"),
              "");
    EXPECT_NE(failure(L"<xsl:variable name='a' select='$b'/><xsl:variable name='b' select='$a'/>"
                      L"<xsl:template match='/'><r><xsl:value-of select='$a'/></r></xsl:template>"),
              "");
    EXPECT_NE(failure(L"<xsl:attribute-set name='a' use-attribute-sets='a'/>"
                      L"<xsl:template match='/'><r xsl:use-attribute-sets='a'/></xsl:template>"),
              "");
}

TEST_F(Transform, WhatCouldNotBeLoadedAgainIsRefused) {
    std::wstring const nest =
        L"<xsl:template match='/'><xsl:call-template name='t'><xsl:with-param "
        L"name='n' select='LIMIT'/></xsl:call-template></xsl:template>"
        L"<xsl:template name='t'><xsl:param name='n'/><e><xsl:if "
        L"test='$n &gt; 1'><xsl:call-template name='t'><xsl:with-param "
        L"name='n' select='$n - 1'/></xsl:call-template></xsl:if></e>"
        L"</xsl:template>";
    auto const with = [&](wchar_t const* limit) {
        std::wstring content = nest;
        return content.replace(content.find(L"LIMIT"), 5, limit);
    };
    EXPECT_EQ(transform(source, sheet(with(L"256")), target), S_OK);
    std::string const saved = xmlOf(target);
    EXPECT_TRUE(loadText(newDocument(), std::wstring(saved.begin(), saved.end()).c_str()));
    target = documentOf(L"<old><node/></old>");
    EXPECT_NE(failure(with(L"257")).find("256"), std::string::npos);
}

TEST_F(Transform, CommentsAndInstructionsThatWouldEndEarlyAreRefused) {
    for (wchar_t const* const content :
         {L"<xsl:comment>--a</xsl:comment>", L"<xsl:comment>a-</xsl:comment>",
          L"<xsl:processing-instruction name='p'>a?>b</xsl:processing-instruction>"}) {
        EXPECT_NE(failure(std::wstring{L"<xsl:template match='/'><r>"} + content +
                          L"</r></xsl:template>"),
                  "")
            << utf8(content);
    }
}

TEST_F(Transform, BadArguments) {
    Document const style = sheet(L"<xsl:template match='/'><r/></xsl:template>");
    Node const text = nodeAt(source, L"//text()");
    Node const element = nodeAt(source, L"d");
    EXPECT_EQ(transform(source, nullptr, target), E_INVALIDARG);
    EXPECT_EQ(transform(source, style, nullptr), E_INVALIDARG);
    EXPECT_EQ(transform(source, element, target), E_INVALIDARG);
    EXPECT_EQ(transform(source, style, element), E_INVALIDARG);
    EXPECT_EQ(transform(text, style, target), E_INVALIDARG);
    EXPECT_EQ(source->transformNodeToObject(style, variantOf(_bstr_t{L"x"})), E_INVALIDARG);
    EXPECT_EQ(source->transformNodeToObject(style, VARIANT{}), E_INVALIDARG);
    EXPECT_EQ(xmlOf(target), "<old><node/></old>\n");
}

TEST_F(Transform, TheTargetKeepsItsSettings) {
    _bstr_t const spaces{L"xmlns:p='urn:p'"};
    ASSERT_EQ(target->setProperty(_bstr_t{L"SelectionNamespaces"}, variantOf(spaces)), S_OK);
    target->put_preserveWhiteSpace(VARIANT_TRUE);
    EXPECT_EQ(transform(source, sheet(L"<xsl:template match='/'><r xmlns='urn:p'/></xsl:template>"),
                        target),
              S_OK);
    VARIANT_BOOL preserves = VARIANT_FALSE;
    target->get_preserveWhiteSpace(&preserves);
    EXPECT_EQ(preserves, VARIANT_TRUE);
    EXPECT_EQ(nameOf(nodeAt(target, L"p:r")), "r");
}

} // namespace tibxml::com::test
