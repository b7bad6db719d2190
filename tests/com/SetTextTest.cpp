#include "Objects.h"

namespace tibxml::com::test {

class SettingText : public testing::Test {
protected:
    Node at(wchar_t const* path) { return nodeAt(document, path); }

    Document document =
        documentOf(L"<?xml version='1.0'?><a b='1' xmlns:p='urn:p'>t<![CDATA[d]]><!--c--><?go "
                   L"now?><e>x<f/></e></a>");
};

TEST_F(SettingText, OfElementsReplacesTheirChildren) {
    EXPECT_EQ(setText(at(L"a"), L" new\r\n<\r&\u00E4"), S_OK);
    EXPECT_EQ(xmlOf(at(L"a")), "<a b=\"1\" xmlns:p=\"urn:p\"> new\n&lt;\n&amp;\u00E4</a>");
    EXPECT_EQ(textOf(document), " new\n<\n&\u00E4");
    EXPECT_EQ(setText(at(L"a"), L""), S_OK);
    EXPECT_EQ(xmlOf(at(L"a")), "<a b=\"1\" xmlns:p=\"urn:p\"/>");
    EXPECT_EQ(setText(at(L"a"), nullptr), S_OK);
    EXPECT_EQ(setText(at(L"a"), L"   "), S_OK);
    EXPECT_EQ(textOf(at(L"a")), "   ");
}

TEST_F(SettingText, OfOtherNodesReplacesTheirCharacters) {
    struct Row {
        wchar_t const* path;
        wchar_t const* text;
        char const* result;
    };

    Row const rows[] = {
        {L"a/@b", L" \r\n\t<\"", " \r\n\t<\""},
        {L"a/text()[1]", L"x\r\ny", "x\ny"},
        {L"a/text()[1]", L"", ""},
        {L"a/text()[2]", L"a]]>b\r", "a]]>b\n"},
        {L"a/comment()", L" - x ", " - x "},
        {L"a/comment()", L"", ""},
        {L"a/processing-instruction()", L"x ? > ", "x ? > "},
        {L"a/@b", L"", ""},
    };
    for (Row const& row : rows) {
        Document const fresh = documentOf(L"<a b='1'>t<![CDATA[d]]><!--c--><?go now?></a>");
        Node const node = nodeAt(fresh, row.path);
        EXPECT_EQ(setText(node, row.text), S_OK) << row.result;
        EXPECT_EQ(textOf(node), row.result);
        _bstr_t xml;
        EXPECT_EQ(fresh->get_xml(xml.GetAddress()), S_OK);
        Document const again = newDocument();
        EXPECT_TRUE(loadText(again, xml)) << row.result;
        EXPECT_EQ(xmlOf(again), utf8(xml));
    }
}

TEST_F(SettingText, RefusesWhatCouldNotBeWritten) {
    struct Row {
        wchar_t const* path;
        wchar_t const* text;
    };

    Row const rows[] = {
        {L"/", L"x"},
        {L"a/comment()", L"a--b"},
        {L"a/comment()", L"a-"},
        {L"a/processing-instruction()", L"a?>b"},
        {L"a/processing-instruction()", L" a"},
        {L"a/processing-instruction()", L"\na"},
    };
    std::string const before = xmlOf(document);
    for (Row const& row : rows) {
        EXPECT_EQ(setText(at(row.path), row.text), E_FAIL) << utf8(std::wstring_view{row.text});
        EXPECT_NE(takeErrorText(), "");
    }
    List children;
    document->get_childNodes(children.out());
    EXPECT_EQ(setText(itemOf(children.get(), 0), L"version='1.0'"), E_FAIL);
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(SettingText, RefusesWhatXmlCannotHold) {
    std::string const before = xmlOf(document);
    for (unsigned const code :
         {0x01U, 0x08U, 0x0BU, 0x1FU, 0xD800U, 0xDFFFU, 0xFFFEU, 0xFFFFU, 0x110000U}) {
        wchar_t const text[] = {L'x', static_cast<wchar_t>(code), 0};
        for (wchar_t const* const path : {L"a", L"a/@b", L"a/text()", L"a/comment()"})
            EXPECT_EQ(setText(at(path), text), E_INVALIDARG) << code;
    }
    wchar_t const nul[] = L"x\0y";
    EXPECT_EQ(at(L"a")->put_text(_bstr_t{SysAllocStringLen(nul, 3), false}), E_INVALIDARG);
    EXPECT_EQ(xmlOf(document), before);
    EXPECT_EQ(setText(at(L"a"), L"\x7F\u0085\uFFFD\U0010FFFF\uE000"), S_OK);
}

TEST_F(SettingText, KeepsWhatWasThereUsable) {
    Node const e = at(L"a/e");
    Node const f = at(L"a/e/f");
    EXPECT_EQ(setText(at(L"a"), L"x"), S_OK);
    EXPECT_EQ(setText(e, L"y"), S_OK);
    EXPECT_EQ(xmlOf(e), "<e>y</e>");
    EXPECT_EQ(setText(f, L"z"), S_OK);
    EXPECT_EQ(xmlOf(f), "<f>z</f>");
}

} // namespace tibxml::com::test
