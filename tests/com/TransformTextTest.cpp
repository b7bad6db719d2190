// Transforming into strings, and what stylesheets say meanwhile.
#include "Objects.h"

#include <cstdint>
#include <string>

namespace tibxml::com::test {

namespace {

Document sheet(std::wstring const& content) {
    Document document = newDocument();
    document->put_preserveWhiteSpace(VARIANT_TRUE);
    std::wstring const xml =
        L"<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
        content + L"</xsl:stylesheet>";
    EXPECT_TRUE(loadText(document, xml.c_str())) << utf8(xml);
    return document;
}

std::wstring templateOf(std::wstring const& content) {
    return L"<xsl:template match='/'>" + content + L"</xsl:template>";
}

class TransformText : public testing::Test {
protected:
    std::string text(std::wstring const& content) const {
        _bstr_t result;
        EXPECT_EQ(source->transformNode(sheet(content), result.GetAddress()), S_OK)
            << utf8(content);
        return utf8(result);
    }

    Document const source = documentOf(L"<d><a>1</a><a>2</a></d>");
};

} // namespace

TEST_F(TransformText, IsWrittenByTheOutputMethod) {
    struct {
        wchar_t const* output;
        wchar_t const* content;
        char const* text;
    } const rows[] = {
        {L"", L"<r/>", "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<r/>\n"},
        {L"<xsl:output encoding='ISO-8859-1'/>", L"<r>\u00e4\u20ac</r>",
         "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<r>\u00e4\u20ac</r>\n"},
        {L"<xsl:output encoding='none' standalone='yes'/>", L"<r/>",
         "<?xml version=\"1.0\" encoding=\"UTF-16\" standalone=\"yes\"?>\n<r/>\n"},
        {L"<xsl:output omit-xml-declaration='yes'/>", L"<r a='&lt;\u00e4'>&amp;</r>",
         "<r a=\"&lt;\u00e4\">&amp;</r>\n"},
        {L"<xsl:output omit-xml-declaration='yes' indent='yes'/>", L"<r><a/><b><c/></b></r>",
         "<r>\n  <a/>\n  <b>\n    <c/>\n  </b>\n</r>\n"},
        {L"<xsl:output omit-xml-declaration='yes' doctype-system='r.dtd'/>", L"<r/>",
         "<!DOCTYPE r SYSTEM \"r.dtd\">\n<r/>\n"},
        {L"<xsl:output omit-xml-declaration='yes' doctype-public='-//R' doctype-system='r.dtd'/>",
         L"<r/>", "<!DOCTYPE r PUBLIC \"-//R\" \"r.dtd\">\n<r/>\n"},
        {L"<xsl:output omit-xml-declaration='yes' cdata-section-elements='r'/>", L"<r>&lt;</r>",
         "<r><![CDATA[<]]></r>\n"},
        {L"<xsl:output omit-xml-declaration='yes'/>",
         L"<r><xsl:text disable-output-escaping='yes'>&lt;x></xsl:text></r>", "<r><x></r>\n"},
        {L"<xsl:output omit-xml-declaration='yes'/>", L"<a/>text<b/>", "<a/>text<b/>\n"},
        {L"<xsl:output omit-xml-declaration='yes'/>", L"", ""},
        {L"<xsl:output method='text'/>", L"<r>a&lt;<b>\u00e4\u20ac</b></r>c", "a<\u00e4\u20acc"},
        {L"<xsl:output method='text' encoding='US-ASCII'/>", L"\u20ac", "\u20ac"},
        {L"<xsl:output method='text'/>", L"", ""},
        {L"<xsl:output method='html' indent='no'/>",
         L"<p>\u00e4<br/><img src='a&amp;b'/><option selected='selected'/></p>",
         "<p>\u00e4<br><img src=\"a&amp;b\"><option selected></option></p>\n"},
        {L"<xsl:output method='html' indent='no' doctype-public='-//W3C//DTD HTML 4.01//EN'/>",
         L"<p/>", "<!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 4.01//EN\">\n<p></p>\n"},
        {L"<xsl:output indent='no'/>",
         L"<html><head/><body><script>a &lt; b</script></body></html>",
         "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-16\">"
         "</head><body><script>a < b</script></body></html>\n"},
    };

    for (auto const& row : rows)
        EXPECT_EQ(text(row.output + templateOf(row.content)), row.text) << utf8(row.output);
}

TEST_F(TransformText, CanBeLoadedAgain) {
    std::string const markup = text(templateOf(L"<r>\u20ac</r>"));
    std::wstring const wide = L"<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<r>\u20ac</r>\n";
    EXPECT_EQ(markup, utf8(wide));
    EXPECT_TRUE(loadText(newDocument(), wide.c_str()));
}

TEST_F(TransformText, OfAnElement) {
    _bstr_t result;
    EXPECT_EQ(nodeAt(source, L"d/a[2]")
                  ->transformNode(sheet(L"<xsl:output method='text'/>"), result.GetAddress()),
              S_OK);
    EXPECT_EQ(utf8(result), "2");
}

TEST_F(TransformText, TwiceByOneStylesheet) {
    Document const style =
        sheet(L"<xsl:output encoding='ISO-8859-1'/>" + templateOf(L"<r>\u00e4</r>"));
    for (int i = 0; i != 3; ++i) {
        _bstr_t result;
        EXPECT_EQ(source->transformNode(style, result.GetAddress()), S_OK);
        EXPECT_EQ(utf8(result), "<?xml version=\"1.0\" encoding=\"UTF-16\"?>\n<r>\u00e4</r>\n");
        Document const target = newDocument();
        EXPECT_EQ(source->transformNodeToObject(style, variantOf(target.get())), S_OK);
        EXPECT_EQ(nameOf(nodeAt(target, L"r")), "r");
    }
}

TEST_F(TransformText, Fails) {
    for (std::wstring const& content :
         {std::wstring{L"<xsl:template match='['/>"}, templateOf(L"<xsl:value-of select='$none'/>"),
          templateOf(L"<r/><xsl:message terminate='yes'>enough</xsl:message>")}) {
        takeErrorText();
        BSTR result = SysAllocString(L"old");
        BSTR const before = result;
        EXPECT_EQ(source->transformNode(sheet(content), &result), E_FAIL) << utf8(content);
        EXPECT_EQ(result, nullptr);
        EXPECT_NE(takeErrorText(), "") << utf8(content);
        SysFreeString(before);
    }
}

TEST_F(TransformText, OfBadArguments) {
    Document const style = sheet(templateOf(L"<r/>"));
    _bstr_t result;
    EXPECT_EQ(source->transformNode(style, nullptr), E_POINTER);
    EXPECT_EQ(source->transformNode(nullptr, result.GetAddress()), E_INVALIDARG);
    EXPECT_EQ(source->transformNode(nodeAt(source, L"d"), result.GetAddress()), E_INVALIDARG);
    EXPECT_EQ(nodeAt(source, L"//text()")->transformNode(style, result.GetAddress()), E_INVALIDARG);
}

TEST_F(TransformText, MessagesAreErrorInformationOfACallThatSucceeds) {
    struct {
        wchar_t const* content;
        char const* words;
    } const rows[] = {
        {L"<r/>", ""},
        {L"<r><xsl:message>go on</xsl:message></r>", "go on"},
        {L"<r><xsl:message>one</xsl:message><xsl:message>two <b>words</b></xsl:message></r>",
         "one\ntwo words"},
        {L"<r><xsl:for-each select='//a'><xsl:message><xsl:value-of select='.'/></xsl:message>"
         L"</xsl:for-each></r>",
         "1\n2"},
        {L"<r><xsl:message>error&#10;</xsl:message><xsl:message>100% %s</xsl:message></r>",
         "error\n100% %s"},
        {L"<r><xsl:message/></r>", ""},
        {L"<r><xsl:message terminate='no'>runtime error: file a line 1 element b&#10;"
         L"</xsl:message></r>",
         "runtime error: file a line 1 element b"},
    };

    for (auto const& row : rows) {
        EXPECT_NE(source->transformNode(nullptr, _bstr_t{}.GetAddress()), S_OK) << "leaves words";
        text(templateOf(row.content));
        EXPECT_EQ(takeErrorText(), row.words) << utf8(row.content);
        Document const target = newDocument();
        EXPECT_EQ(
            source->transformNodeToObject(sheet(templateOf(row.content)), variantOf(target.get())),
            S_OK);
        EXPECT_EQ(takeErrorText(), row.words) << utf8(row.content);
    }
}

TEST_F(TransformText, ManyMessagesAreCut) {
    std::wstring items;
    for (int i = 0; i != 1000; ++i)
        items += L"<a/>";
    Document const many = documentOf((L"<d>" + items + L"</d>").c_str());
    _bstr_t result;
    EXPECT_EQ(many->transformNode(sheet(L"<xsl:template match='a'><xsl:message>" +
                                        std::wstring(99, L'x') + L"</xsl:message></xsl:template>"),
                                  result.GetAddress()),
              S_OK);
    std::size_t const size = takeErrorText().size();
    EXPECT_GE(size, std::size_t{1} << 16);
    EXPECT_LE(size, (std::size_t{1} << 16) + 100);
}

} // namespace tibxml::com::test
