#include "Objects.h"

namespace tibxml::com::test {

struct NameRow {
    wchar_t const* name;
    wchar_t const* uri;
    bool asElement;
    bool asAttribute;
};

NameRow const nameRows[] = {
    {L"a", L"", true, true},
    {L"a", nullptr, true, true},
    {L"_a-b.c1", L"", true, true},
    {L"\u00E4\u4E00\U00010000", L"", true, true},
    {L"a", L"urn:x", true, true},
    {L"p:a", L"urn:x", true, true},
    {L"p:a", L"", true, true}, // settled where it is inserted
    {L"xml:lang", L"", true, true},
    {L"xml:lang", L"http://www.w3.org/XML/1998/namespace", true, true},
    {L"xmlns", L"", false, true},
    {L"xmlns:p", L"", false, true},
    {L"xmlns:p", L"http://www.w3.org/2000/xmlns/", false, true},
    {L"", L"", false, false},
    {nullptr, L"", false, false},
    {L"1a", L"", false, false},
    {L"-a", L"", false, false},
    {L"a b", L"", false, false},
    {L" a", L"", false, false},
    {L"a>", L"", false, false},
    {L"a\u00D7", L"", false, false},
    {L":a", L"", false, false},
    {L"a:", L"", false, false},
    {L":", L"", false, false},
    {L"a:b:c", L"urn:x", false, false},
    {L"p:1", L"urn:x", false, false},
    {L"1:p", L"urn:x", false, false},
    {L"xml:lang", L"urn:x", false, false},
    {L"p:a", L"http://www.w3.org/XML/1998/namespace", false, false},
    {L"a", L"http://www.w3.org/2000/xmlns/", false, false},
    {L"xmlns", L"urn:x", false, false},
    {L"xmlns:p", L"urn:x", false, false},
    {L"a", L"urn:\x01", false, false},
    {L"a", L"urn:\uFFFE", false, false},
};

class Creating : public testing::Test {
protected:
    HRESULT create(LONG type, wchar_t const* name, wchar_t const* uri = nullptr) {
        return document->createNode(variantOf(type), _bstr_t{name}, _bstr_t{uri}, node.out());
    }

    Document document = newDocument();
    Node node;
};

TEST_F(Creating, ChecksNames) {
    for (NameRow const& row : nameRows) {
        for (LONG const type : {NODE_ELEMENT, NODE_ATTRIBUTE}) {
            bool const valid = type == NODE_ELEMENT ? row.asElement : row.asAttribute;
            std::string const what =
                row.name != nullptr ? utf8(std::wstring_view{row.name}) : "null";
            EXPECT_EQ(create(type, row.name, row.uri), valid ? S_OK : E_FAIL) << what << type;
            EXPECT_EQ(node.get() != nullptr, valid) << what;
            if (!valid) {
                EXPECT_NE(takeErrorText(), "") << what;
                continue;
            }
            EXPECT_EQ(nameOf(node), what);
            EXPECT_EQ(textOf(node), "");
            Node parent;
            EXPECT_EQ(node->get_parentNode(parent.out()), S_FALSE);
            Ptr<IXMLDOMDocument> owner;
            EXPECT_EQ(node->get_ownerDocument(owner.out()), S_OK);
            EXPECT_TRUE(isSame(owner, document));
        }
    }
}

TEST_F(Creating, OfAttributesTakesTheSameNames) {
    for (NameRow const& row : nameRows) {
        if (row.uri == nullptr || *row.uri != 0) continue;
        Ptr<IXMLDOMAttribute> attribute;
        EXPECT_EQ(document->createAttribute(_bstr_t{row.name}, attribute.out()),
                  row.asAttribute ? S_OK : E_FAIL);
    }
    Ptr<IXMLDOMAttribute> attribute;
    ASSERT_EQ(document->createAttribute(_bstr_t{L"a"}, attribute.out()), S_OK);
    _bstr_t name;
    EXPECT_EQ(attribute->get_name(name.GetAddress()), S_OK);
    EXPECT_EQ(utf8(name), "a");
    VARIANT value{};
    EXPECT_EQ(attribute->get_value(&value), S_OK);
    EXPECT_EQ(value.vt, VT_BSTR);
    EXPECT_EQ(SysStringLen(value.bstrVal), 0U);
    VariantClear(&value);
    EXPECT_EQ(attribute->put_value(variantOf(LONG{1})), E_INVALIDARG);
    EXPECT_EQ(attribute->put_value(variantOf(_bstr_t{L" \r\n<"})), S_OK);
    EXPECT_EQ(textOf(attribute), " \r\n<");
}

TEST_F(Creating, KnowsTheTypes) {
    struct Row {
        LONG type;
        wchar_t const* name;
        HRESULT result;
    };

    Row const rows[] = {
        {NODE_TEXT, L"", S_OK},
        {NODE_CDATA_SECTION, nullptr, S_OK},
        {NODE_COMMENT, L"ignored", S_OK},
        {NODE_PROCESSING_INSTRUCTION, L"target", S_OK},
        {NODE_PROCESSING_INSTRUCTION, L"xml-stylesheet", S_OK},
        {NODE_PROCESSING_INSTRUCTION, L"", E_FAIL},
        {NODE_PROCESSING_INSTRUCTION, L"xml", E_FAIL},
        {NODE_PROCESSING_INSTRUCTION, L"XmL", E_FAIL},
        {NODE_PROCESSING_INSTRUCTION, L"p:t", E_FAIL},
        {NODE_DOCUMENT, L"a", E_INVALIDARG},
        {NODE_INVALID, L"a", E_INVALIDARG},
        {5, L"a", E_INVALIDARG},
        {-1, L"a", E_INVALIDARG},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(create(row.type, row.name), row.result) << row.type;
        if (row.result != S_OK) continue;
        DOMNodeType type = NODE_INVALID;
        EXPECT_EQ(node->get_nodeType(&type), S_OK);
        EXPECT_EQ(type, row.type);
    }
    EXPECT_EQ(document->createNode(VARIANT{}, _bstr_t{L"a"}, nullptr, node.out()), E_INVALIDARG);
    VARIANT small{};
    small.vt = VT_I2;
    small.iVal = NODE_ELEMENT;
    EXPECT_EQ(document->createNode(small, _bstr_t{L"a"}, nullptr, node.out()), S_OK);
}

} // namespace tibxml::com::test
