// References in a source start from the source's own file.
#include "Transforming.h"

#include <TibXml/tibutils/DataEncoding.h>

namespace transforming {

namespace {

// The stylesheet lies in another folder, where other files have the same names.
class SourceBase : public testing::Test {
protected:
    SourceBase() {
        folder.write("s/one.xml", "<wrong/>");
        folder.write("d/one.xml", "<one><g h='sub/three.xml'/></one>");
        folder.write("d/two.xml", "<two/>");
        folder.write("d/sub/three.xml", "<three/>");
        folder.write("d/sub/four.xml", "<four/>");
    }

    // The content of the root element, which has to be that of xsltproc.
    std::string result(std::string const& expression) const {
        std::string const sheet = write(expression);
        std::string const ourResult = ours(sheet, document);
        EXPECT_EQ(ourResult, xsltproc(sheet, document)) << expression;
        return ourResult;
    }

    std::string write(std::string const& expression) const {
        return folder.write("s/main.xsl",
                            stylesheet("<xsl:template match='/'><r><xsl:copy-of select=\"" +
                                       expression + "\"/></r></xsl:template>"));
    }

    Folder const folder;
    std::string const document =
        folder.write("d/d.xml", "<d><f h='one.xml'/><f h='two.xml'/><n h='none.xml'/><b "
                                "xml:base='sub/'><i h='four.xml'/></b><t>two.xml</t></d>");
};

TEST_F(SourceBase, IsWhereReferencesInItStart) {
    EXPECT_EQ(result("document(/d/f[1]/@h)"), "<r><one><g h=\"sub/three.xml\"></g></one></r>");
    EXPECT_EQ(result("document(/d/f/@h)/two"), "<r><two></two></r>");
    EXPECT_EQ(result("document(/d/t)"), "<r><two></two></r>");
    EXPECT_EQ(result("document('two.xml', /)"), "<r><two></two></r>");
    EXPECT_EQ(result("count(document(/d/n/@h))"), "<r>0</r>");
    EXPECT_EQ(result("count(document(/d/none/@h))"), "<r>0</r>");
}

TEST_F(SourceBase, IsThatOfTheDocumentThatWasRead) {
    EXPECT_EQ(result("document(document(/d/f/@h)/one/g/@h)"), "<r><three></three></r>");
    EXPECT_EQ(result("document('four.xml', document(document(/d/f/@h)/one/g/@h))"),
              "<r><four></four></r>");
}

TEST_F(SourceBase, FollowsItsBaseAttributes) {
    EXPECT_EQ(result("document(/d/b/i/@h)"), "<r><four></four></r>");
}

TEST_F(SourceBase, TheSourceIsNotReadAgain) {
    EXPECT_EQ(result("generate-id(document('', /)) = generate-id(/)"), "<r>true</r>");
    EXPECT_EQ(result("generate-id(document('d.xml', /)) = generate-id(/)"), "<r>true</r>");
}

TEST_F(SourceBase, IsNotWhereReferencesInTheStylesheetStart) {
    EXPECT_EQ(result("document('one.xml')"), "<r><wrong></wrong></r>");
}

TEST_F(SourceBase, WithSpaceStripped) {
    std::string const sheet = folder.write(
        "s/main.xsl", stylesheet("<xsl:strip-space elements='*'/><xsl:template match='/'><r>"
                                 "<xsl:copy-of select='document(/d/f/@h)/two'/></r>"
                                 "</xsl:template>"));
    EXPECT_EQ(ours(sheet, document), "<r><two></two></r>");
}

TEST_F(SourceBase, WhoseNameHasToBeEscaped) {
    folder.write("ä b%20#?/one.xml", "<found/>");
    std::string const source = folder.write("ä b%20#?/d.xml", "<d><f h='one.xml'/></d>");
    EXPECT_EQ(ours(write("document(//@h)"), source), "<r><found></found></r>");
}

TEST_F(SourceBase, IsNoneForAStringOrAStream) {
    WXmlDoc sheet = loadFile(write("document(//@h)"));
    WXmlDoc relative = WXmlDoc::CreateFromString(L"<d h='two.xml'/>");
    EXPECT_FALSE(relative.ApplyXSLT(sheet));
    std::wstring const path{TibUtils::DataEncoding::Utf8Decode(folder.path("d/two.xml")).view()};
    WXmlDoc absolute = WXmlDoc::CreateFromString((L"<d h='" + path + L"'/>").c_str());
    EXPECT_TRUE(absolute.ApplyXSLT(sheet));
    EXPECT_STREQ(absolute.GetRootNode().GetXML(), L"<r><two/></r>");
}

TEST_F(SourceBase, DoesNotReachOtherMachines) {
    WXmlDoc sheet = loadFile(write("document(//@h)"));
    for (wchar_t const* const xml : {L"<d h='http://127.0.0.1:9/two.xml'/>",
                                     L"<d xml:base='http://127.0.0.1:9/' h='two.xml'/>"}) {
        WXmlDoc source = WXmlDoc::CreateFromString(xml);
        EXPECT_FALSE(source.ApplyXSLT(sheet)) << xml;
    }
}

TEST_F(SourceBase, IsGoneWithTheContent) {
    WXmlDoc sheet = loadFile(write("document(//@h)"));
    WXmlDoc source = loadFile(document);
    WXmlDoc other = loadFile(folder.write(
        "s/other.xsl", stylesheet("<xsl:template match='/'><d h='two.xml'/></xsl:template>")));
    EXPECT_TRUE(source.ApplyXSLT(other));
    EXPECT_FALSE(source.ApplyXSLT(sheet)) << "the result is from no file";
}

} // namespace

} // namespace transforming
