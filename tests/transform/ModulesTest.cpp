// Stylesheets of several files, and what they may read.
#include "Transforming.h"

#include <TibXml/tibutils/DataEncoding.h>

namespace transforming {

namespace {

constexpr char const* root = "<xsl:template match='/'><r><xsl:apply-templates/></r></xsl:template>";

class Modules : public testing::Test {
protected:
    void write(std::string const& name, std::string const& content) {
        folder.write(name, stylesheet(content));
    }

    // The result of main.xsl, which has to be that of xsltproc.
    std::string result() const {
        std::string const ourResult = ours(folder.path("main.xsl"), document);
        EXPECT_EQ(ourResult, xsltproc(folder.path("main.xsl"), document));
        return ourResult;
    }

    Folder const folder;
    std::string const document = folder.write("document.xml", "<d><a/><b/></d>");
};

TEST_F(Modules, ImportsGiveWayToTheImporter) {
    write("main.xsl", std::string{"<xsl:import href='sub/one.xsl'/>"} + root +
                          "<xsl:template match='a'><mine/><xsl:apply-imports/></xsl:template>");
    write("sub/one.xsl", "<xsl:import href='two.xsl'/><xsl:template match='a'><one/>"
                         "<xsl:apply-imports/></xsl:template>");
    write("sub/two.xsl", "<xsl:template match='a'><two/></xsl:template>"
                         "<xsl:template match='b'><twoB/></xsl:template>");
    EXPECT_EQ(result(), "<r><mine></mine><one></one><two></two><twoB></twoB></r>");
}

TEST_F(Modules, TheLastImportWins) {
    write("main.xsl",
          std::string{"<xsl:import href='one.xsl'/><xsl:import href='two.xsl'/>"} + root);
    write("one.xsl", "<xsl:template match='a'><one/></xsl:template>");
    write("two.xsl", "<xsl:template match='a'><two/></xsl:template>");
    EXPECT_EQ(result(), "<r><two></two></r>");
}

TEST_F(Modules, IncludesAreAsIfWrittenThere) {
    write("main.xsl", std::string{root} + "<xsl:include href='sub/../one.xsl'/>"
                                          "<xsl:variable name='v' select='$w + 1'/>");
    write("one.xsl", "<xsl:variable name='w' select='1'/>"
                     "<xsl:template match='a'><v><xsl:value-of select='$v'/></v></xsl:template>");
    EXPECT_EQ(result(), "<r><v>2</v></r>");
}

TEST_F(Modules, ImportsBySpecialPaths) {
    write("a b%c.xsl", "<xsl:template match='a'><one/></xsl:template>");
    write("main.xsl", std::string{"<xsl:import href='a%20b%25c.xsl'/>"} + root);
    EXPECT_EQ(result(), "<r><one></one></r>");
    write("main.xsl", "<xsl:import href='" + folder.path("a%20b%25c.xsl") + "'/>" + root);
    EXPECT_EQ(result(), "<r><one></one></r>");
    write("main.xsl", "<xsl:import href='file://" + folder.path("a%20b%25c.xsl") + "'/>" + root);
    EXPECT_EQ(result(), "<r><one></one></r>");
}

TEST_F(Modules, TheFolderMayHaveAnyName) {
    folder.write("ä b%20#?/main.xsl", stylesheet(std::string{"<xsl:import href='o.xsl'/>"} + root));
    folder.write("ä b%20#?/o.xsl", stylesheet("<xsl:template match='a'><one/></xsl:template>"));
    EXPECT_EQ(ours(folder.path("ä b%20#?/main.xsl"), document), "<r><one></one></r>");
}

TEST_F(Modules, AnImportedFileMayHaveEntities) {
    folder.write("names.ent", "<!ENTITY name 'word'>");
    folder.write("one.xsl", "<!DOCTYPE xsl:stylesheet [<!ENTITY % all SYSTEM 'names.ent'>%all;"
                            "<!ENTITY own 'of'>]>" +
                                stylesheet("<xsl:template match='a'>&own; &name;</xsl:template>"));
    write("main.xsl", std::string{"<xsl:import href='one.xsl'/>"} + root);
    EXPECT_EQ(result(), "<r>of word</r>");
}

TEST_F(Modules, DocumentReadsBesideTheStylesheet) {
    folder.write("sub/other.xml", "<o><p id='1'/><p id='2'/></o>");
    write("main.xsl", "<xsl:template match='/'><r><xsl:copy-of "
                      "select='document(\"sub/other.xml\")//p'/></r></xsl:template>");
    EXPECT_EQ(result(), "<r><p id=\"1\"></p><p id=\"2\"></p></r>");
}

TEST_F(Modules, DocumentOfNothingIsTheStylesheet) {
    write("main.xsl", "<xsl:template match='/'><r><xsl:value-of "
                      "select='count(document(\"\")/*/*)'/></r></xsl:template>");
    EXPECT_EQ(result(), "<r>1</r>");
}

TEST_F(Modules, AMissingDocumentIsAnEmptySet) {
    write("main.xsl", "<xsl:template match='/'><r><xsl:value-of "
                      "select='count(document(\"none.xml\"))'/></r></xsl:template>");
    EXPECT_EQ(result(), "<r>0</r>");
}

TEST_F(Modules, AStylesheetWithoutAFileHasNothingBesideIt) {
    folder.write("other.xml", "<o/>");
    WXmlDoc sheet;
    auto const use = [&](std::string const& href) {
        EXPECT_TRUE(sheet.LoadFromString(TibUtils::DataEncoding::Utf8Decode(
            stylesheet("<xsl:template match='/'><r><xsl:copy-of select='document(\"" + href +
                       "\")'/></r></xsl:template>"))));
        WXmlDoc source = loadFile(document);
        return source.ApplyXSLT(sheet);
    };
    EXPECT_FALSE(use("other.xml"));
    EXPECT_FALSE(use("document.xml"));
    EXPECT_TRUE(use(folder.path("other.xml")));
}

// Each is the content of main.xsl, and must fail with the document as it was.
TEST_F(Modules, WhatIsRefused) {
    folder.write("self.xsl", stylesheet("<xsl:import href='self.xsl'/>"));
    folder.write("round.xsl", stylesheet("<xsl:include href='main.xsl'/>"));
    folder.write("broken.xsl", "<xsl:stylesheet");
    folder.write("other.xsl", "<other/>");
    folder.write(
        "laughs.xsl",
        "<!DOCTYPE x [<!ENTITY a 'hahahahahahahahahahahahahaha'>"
        "<!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c '&b;&b;&b;&b;&b;&b;&b;'>"
        "<!ENTITY d '&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;'><!ENTITY e '&d;&d;&d;&d;&d;&d;&d;'>"
        "<!ENTITY f '&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;'><!ENTITY g '&f;&f;&f;&f;&f;&f;&f;'>"
        "<!ENTITY h '&g;&g;&g;&g;&g;&g;&g;&g;&g;&g;'><!ENTITY i '&h;&h;&h;&h;&h;&h;&h;'>]>" +
            stylesheet("<xsl:template match='a'>&i;&i;&i;&i;</xsl:template>"));
    std::string deep;
    for (int i = 0; i != 300; ++i)
        deep = "<e>" + deep + "</e>";
    folder.write("deep.xsl", stylesheet("<xsl:template match='a'>" + deep + "</xsl:template>"));
    for (std::string const& content : {
             std::string{"<xsl:import href='none.xsl'/>"},
             std::string{"<xsl:import href='self.xsl'/>"},
             std::string{"<xsl:import href='main.xsl'/>"},
             std::string{"<xsl:include href='round.xsl'/>"},
             std::string{"<xsl:import href='broken.xsl'/>"},
             std::string{"<xsl:include href='other.xsl'/>"},
             std::string{"<xsl:import href='laughs.xsl'/>"},
             std::string{"<xsl:import href='deep.xsl'/>"},
             std::string{"<xsl:import href='/dev/zero'/>"},
         }) {
        write("main.xsl", content + root);
        WXmlDoc sheet = loadFile(folder.path("main.xsl"));
        WXmlDoc source = loadFile(document);
        EXPECT_FALSE(source.ApplyXSLT(sheet)) << content;
        EXPECT_STREQ(source.SaveToString(), L"<d><a/><b/></d>") << content;
    }
}

TEST_F(Modules, NothingIsWritten) {
    struct Instruction {
        char const* space;
        char const* name;
        char const* attribute;
    };

    for (Instruction const& each :
         {Instruction{"http://www.jclark.com/xt", "e:document", "href"},
          Instruction{"http://icl.com/saxon", "e:output", "href"},
          Instruction{"org.apache.xalan.xslt.extensions.Redirect", "e:write", "file"},
          Instruction{"http://www.w3.org/1999/XSL/Transform", "e:document", "href"}}) {
        std::string const written = folder.path("written");
        std::string const name = each.name;
        folder.write("main.xsl", std::string{"<xsl:stylesheet version='1.1' xmlns:e='"} +
                                     each.space + "' extension-element-prefixes='e' " +
                                     "xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
                                     "<xsl:template match='/'><r><" + name + " " + each.attribute +
                                     "='" + written + "'><w/></" + name +
                                     "></r></xsl:template></xsl:stylesheet>");
        WXmlDoc sheet = loadFile(folder.path("main.xsl"));
        WXmlDoc source = loadFile(document);
        EXPECT_FALSE(source.ApplyXSLT(sheet)) << each.space;
        EXPECT_STREQ(source.SaveToString(), L"<d><a/><b/></d>") << each.space;
        EXPECT_NE(run("test -e '" + written + "'").status, 0) << each.space;
    }
}

TEST_F(Modules, NothingIsPrinted) {
    write("main.xsl", std::string{"<xsl:import href='http://127.0.0.1:9/a.xsl'/>"} + root +
                          "<xsl:template match='a'><xsl:value-of select='$none'/></xsl:template>");
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    WXmlDoc sheet = loadFile(folder.path("main.xsl"));
    WXmlDoc source = loadFile(document);
    bool const done = source.ApplyXSLT(sheet);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_FALSE(done);
}

} // namespace

} // namespace transforming
