// Which faults of a stylesheet are errors, and what later versions of the language may use. Where
// xsltproc answers otherwise, it only prints what is wrong.
#include "Transforming.h"

#include <TibXml/tibutils/DataEncoding.h>

namespace transforming {

namespace {

struct Row {
    char const* version;
    char const* content; // of the stylesheet
    char const* result;
    char const* ofXsltproc = nullptr; // null for the same
};

constexpr char const* failed = "failed";

std::string sheetOf(Row const& row) {
    return std::string{"<xsl:stylesheet version='"} + row.version +
           "' xmlns:xsl='http://www.w3.org/1999/XSL/Transform' xmlns:e='urn:e' "
           "extension-element-prefixes='e'>" +
           row.content + "</xsl:stylesheet>";
}

template <std::size_t count>
void compare(Row const (&rows)[count]) {
    Folder const folder;
    std::string const document = folder.write("document.xml", "<d><a>1</a><a>2</a></d>");
    for (Row const& row : rows) {
        std::string const sheet = folder.write("style.xsl", sheetOf(row));
        EXPECT_EQ(ours(sheet, document), row.result) << row.version << " " << row.content;
        EXPECT_EQ(xsltproc(sheet, document),
                  row.ofXsltproc != nullptr ? row.ofXsltproc : row.result)
            << row.version << " " << row.content;
    }
}

// clang-format off
constexpr Row warnings[] = {
    {"1.0", "<xsl:template match='/'><r><xsl:number value='3' format='a' letter-value='alphabetic'/></r></xsl:template>",
     "<r>c</r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:number value='3' format='a' letter-value='traditional'/></r></xsl:template>",
     "<r>c</r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:number value='3' format='a' letter-value='other'/></r></xsl:template>",
     "<r>c</r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:number value='3' format='a' lang='xx'/></r></xsl:template>",
     "<r>c</r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:number value='-1'/></r></xsl:template>", "<r>0</r>"},
    {"1.0", "<xsl:decimal-format decimal-separator=',' grouping-separator='.'/>"
            "<xsl:decimal-format grouping-separator='.' decimal-separator=','/>"
            "<xsl:template match='/'><r><xsl:value-of select='format-number(1.5, \"0,0\")'/></r></xsl:template>",
     "<r>1,5</r>"},
    {"1.0", "<xsl:decimal-format name='n' decimal-separator=','/><xsl:decimal-format name='n' decimal-separator=','/>"
            "<xsl:template match='/'><r><xsl:value-of select='format-number(1.5, \"0,0\", \"n\")'/></r></xsl:template>",
     "<r>1,5</r>"},
    {"1.0", "<xsl:decimal-format name='e:n' decimal-separator=','/><xsl:decimal-format name='f:n' xmlns:f='urn:e' decimal-separator=','/>"
            "<xsl:template match='/'><r/></xsl:template>",
     "<r></r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:for-each select='//a'><xsl:sort order='none'/><xsl:value-of select='.'/></xsl:for-each></r></xsl:template>",
     "<r>12</r>"},
    {"1.0", "<xsl:template match='/'><r xsl:exclude-result-prefixes='none'/></xsl:template>", "<r></r>"},
    {"1.0", "<xsl:output method='none'/><xsl:template match='/'><r/></xsl:template>", "<r></r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:value-of select='format-number(1, \"0.0.0\")'/></r></xsl:template>",
     "<r>1.0</r>"},
};

constexpr Row errors[] = {
    {"1.0", "<xsl:template match='/'><r><xsl:nothing/></r></xsl:template>", failed, "<r></r>"},
    {"1.0", "<xsl:template match='none'><r><xsl:nothing/></r></xsl:template><xsl:template match='/'><r/></xsl:template>",
     failed, "<r></r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:nothing><xsl:fallback>f</xsl:fallback></xsl:nothing></r></xsl:template>",
     failed, "<r>f</r>"},
    {"1.0", "<xsl:nothing/><xsl:template match='/'><r/></xsl:template>", failed},
    {"1.0", "<xsl:decimal-format name='n' decimal-separator=','/><xsl:decimal-format name='n'/><xsl:template match='/'><r/></xsl:template>",
     failed, "<r></r>"},
    {"1.0", "<xsl:decimal-format name='e:n' decimal-separator=','/><xsl:decimal-format name='f:n' xmlns:f='urn:e' decimal-separator='.'/>"
            "<xsl:template match='/'><r/></xsl:template>",
     failed, "<r></r>"},
    {"1.0", "<xsl:output indent='none'/><xsl:template match='/'><r/></xsl:template>", failed},
    {"1.0", "<xsl:template match='/'><r><a/><xsl:attribute name='x'>1</xsl:attribute></r></xsl:template>", failed},
    {"1.0", "<xsl:template match='/'><xsl:template match='x'/></xsl:template>", failed},
    {"1.0", "<xsl:template name='a'/><xsl:template name='a'/><xsl:template match='/'><r/></xsl:template>", failed},
    {"1.0", "<xsl:variable name='a'/><xsl:variable name='a'/><xsl:template match='/'><r/></xsl:template>", failed},
    {"1.0", "<xsl:template match='/'><r><xsl:number value='3' lang='xx'/><xsl:nothing/></r></xsl:template>", failed, "<r>3</r>"},
    {"1.0", "<xsl:template match='/'><r><e:nothing/></r></xsl:template>", failed},
    {"1.0", "<xsl:template match='/'><r><xsl:if test='0'><xsl:value-of select='if (1) then 2 else 3'/></xsl:if></r></xsl:template>", failed},
    {"2.0", "<xsl:template match='/'><r><xsl:nothing/></r></xsl:template>", failed, "<r></r>"},
    {"2.0", "<xsl:template match='/'><r><xsl:if test='0'><xsl:value-of select='if (1) then 2 else 3'/></xsl:if></r></xsl:template>", failed},
    {"2.0", "<xsl:template match='/'><r a='{if (1) then 2 else 3}'/></xsl:template>", failed},
    {"2.0", "<xsl:template match='/'><r><xsl:value-of select='nothing(1)'/></r></xsl:template>", failed},
    {"2.0", "<xsl:template name='a'/><xsl:template name='a'/><xsl:template match='/'><r/></xsl:template>", failed},
    {"2.0", "<xsl:template match='/'><r xsl:version='1.0'><xsl:nothing/></r></xsl:template>", failed, "<r></r>"},
};

constexpr Row later[] = {
    {"2.0", "<xsl:template match='/'><r><xsl:nothing><xsl:fallback>f</xsl:fallback></xsl:nothing></r></xsl:template>",
     "<r>f</r>"},
    {"2.0", "<xsl:template match='/'><r><xsl:nothing>x<xsl:fallback>f</xsl:fallback><xsl:other/><xsl:fallback>g</xsl:fallback></xsl:nothing></r></xsl:template>",
     "<r>fg</r>"},
    {"2.0", "<xsl:template match='/'><r><xsl:if test='false()'><xsl:nothing/></xsl:if></r></xsl:template>", "<r></r>"},
    {"2.0", "<xsl:nothing><xsl:other/></xsl:nothing><xsl:template match='/'><r/></xsl:template>", "<r></r>"},
    {"2.0", "<xsl:template match='/' nothing='1'><r><xsl:value-of select='//a' separator=','/></r></xsl:template>",
     "<r>1</r>"},
    {"2.0", "<xsl:template match='/'><r><xsl:choose><xsl:when test='system-property(\"xsl:version\") &gt;= 2'><xsl:nothing/></xsl:when>"
            "<xsl:otherwise>o</xsl:otherwise></xsl:choose></r></xsl:template>",
     "<r>o</r>"},
    {"2.0", "<xsl:template match='/'><r><xsl:if test='0'><xsl:value-of select='nothing(1)'/></xsl:if></r></xsl:template>", "<r></r>"},
    {"1.1", "<xsl:template match='/'><r><xsl:nothing><xsl:fallback>f</xsl:fallback></xsl:nothing></r></xsl:template>", "<r>f</r>"},
    {"3.0", "<xsl:template match='/'><r/></xsl:template>", "<r></r>"},
    {"1.0", "<xsl:template match='/'><r xsl:version='2.0'><xsl:nothing><xsl:fallback>f</xsl:fallback></xsl:nothing></r></xsl:template>",
     "<r>f</r>"},
    {"1.0", "<xsl:template match='/'><r xsl:version='2.0'><xsl:nothing/></r></xsl:template>", failed, "<r></r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:fallback>f</xsl:fallback></r></xsl:template>", "<r></r>"},
    {"1.0", "<xsl:template match='/'><r><e:nothing><xsl:fallback>f</xsl:fallback></e:nothing></r></xsl:template>", "<r>f</r>"},
    {"1.0", "<xsl:template match='/'><r><xsl:if test='0'><e:nothing/></xsl:if></r></xsl:template>", "<r></r>"},
    {"1.0", "<e:data><xsl:nothing/></e:data><xsl:template match='/'><r/></xsl:template>", "<r></r>"},
};

// clang-format on

TEST(Rules, WarningsDoNotFail) {
    compare(warnings);
}

TEST(Rules, ErrorsDo) {
    compare(errors);
}

TEST(Rules, LaterVersionsOfTheLanguage) {
    compare(later);
}

TEST(Rules, HoldForWhatIsImportedAndIncluded) {
    Folder const folder;
    std::string const document = folder.write("document.xml", "<d/>");
    constexpr char const* named = "<xsl:template name='used'><xsl:nothing/></xsl:template>";
    for (char const* const instruction : {"import", "include"}) {
        std::string const main =
            folder.write("main.xsl", stylesheet(std::string{"<xsl:"} + instruction +
                                                " href='part.xsl'/><xsl:template match='/'><r/>"
                                                "</xsl:template>"));
        folder.write("part.xsl", stylesheet(named));
        EXPECT_EQ(ours(main, document), failed) << instruction;
        folder.write("part.xsl", stylesheet("<xsl:template match='x'><xsl:number value='1' "
                                            "lang='xx'/></xsl:template>"));
        EXPECT_EQ(ours(main, document), "<r></r>") << instruction;
    }
}

} // namespace

} // namespace transforming
