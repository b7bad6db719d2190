// What the process has set up for libxslt and libxml2 stays as it is.
#include "Transforming.h"

#include <libxml/xmlerror.h>
#include <libxslt/xsltutils.h>

namespace transforming {

namespace {

int calls = 0;

void countCall(void* /*data*/, char const* /*format*/, ...) {
    ++calls;
}

TEST(Handlers, AreThoseOfTheProcessAgain) {
    xmlGenericErrorFunc const before = xsltGenericError;
    void* const data = xsltGenericErrorContext;
    xsltSetGenericErrorFunc(&calls, countCall);
    xmlGenericErrorFunc const generic = xmlGenericError;
    xmlStructuredErrorFunc const structured = xmlStructuredError;
    calls = 0;
    Folder const folder;
    std::string const document = folder.write("document.xml", "<d/>");
    for (char const* const content :
         {"<xsl:template match='['/>", "<xsl:template match='/'><a/><b/></xsl:template>",
          "<xsl:template match='/'><r><xsl:message>m</xsl:message></r></xsl:template>",
          "<xsl:template match='/'><xsl:value-of select='$none'/></xsl:template>"}) {
        ours(folder.write("style.xsl", stylesheet(content)), document);
        EXPECT_EQ(xsltGenericError, countCall) << content;
        EXPECT_EQ(xsltGenericErrorContext, &calls) << content;
        EXPECT_EQ(xmlGenericError, generic) << content;
        EXPECT_EQ(xmlStructuredError, structured) << content;
    }
    EXPECT_EQ(calls, 0) << "our errors are not the process's";
    xsltSetGenericErrorFunc(data, before);
}

} // namespace

} // namespace transforming
