#include "Objects.h"

namespace tibxml::com::test {

struct NodeRow {
    wchar_t const* path;
    DOMNodeType type;
    char const* name;
    char const* text;
};

wchar_t const* const sample =
    L"<?xml version='1.0'?><!--c--><p:a xmlns:p='urn:p' p:b=' v '>t<![CDATA[<d>]]><?go now?>"
    L"<e>  u </e><!--x--></p:a>";

TEST(Nodes, TellWhatTheyAre) {
    NodeRow const rows[] = {
        {L".", NODE_DOCUMENT, "#document", "t<d>  u "},
        {L"/*", NODE_ELEMENT, "p:a", "t<d>  u "},
        {L"/*/@*", NODE_ATTRIBUTE, "p:b", " v "},
        {L"/*/text()[1]", NODE_TEXT, "#text", "t"},
        {L"/*/text()[2]", NODE_CDATA_SECTION, "#cdata-section", "<d>"},
        {L"//processing-instruction()", NODE_PROCESSING_INSTRUCTION, "go", "now"},
        {L"/comment()", NODE_COMMENT, "#comment", "c"},
        {L"//e", NODE_ELEMENT, "e", "  u "},
    };
    Document const document = documentOf(sample);
    for (NodeRow const& row : rows) {
        Node const node = nodeAt(document, row.path);
        ASSERT_NE(node.get(), nullptr) << utf8(row.path);
        DOMNodeType type = NODE_INVALID;
        EXPECT_EQ(node->get_nodeType(&type), S_OK);
        EXPECT_EQ(type, row.type) << row.name;
        EXPECT_EQ(nameOf(node), row.name);
        EXPECT_EQ(textOf(node), row.text) << row.name;
    }
}

TEST(Nodes, KeepWordsApartThatStandInLinesOfTheirOwn) {
    Document const document = documentOf(L"<a>\n<b>Hello</b>\n<i>world</i>\n</a>");
    EXPECT_EQ(textOf(document), "Hello world");
    Node const a = nodeAt(document, L"a");
    EXPECT_EQ(textOf(a), "Hello world");
    VARIANT typed{};
    EXPECT_EQ(a->get_nodeTypedValue(&typed), S_OK);
    EXPECT_EQ(utf8(typed.bstrVal), "Hello world");
    VariantClear(&typed);
    EXPECT_NE(nodeAt(document, L"a[. = 'Helloworld']").get(), nullptr) << "XPath has no layout";
    EXPECT_EQ(setText(a, L" as\n\n written "), S_OK);
    EXPECT_EQ(textOf(a), " as\n\n written ");
}

TEST(Nodes, ShowTheDeclarationToListsOnly) {
    Document const document = documentOf(sample);
    List children;
    ASSERT_EQ(document->get_childNodes(children.out()), S_OK);
    EXPECT_EQ(lengthOf(children.get()), 3);
    Node const declaration = itemOf(children.get(), 0);
    DOMNodeType type = NODE_INVALID;
    declaration->get_nodeType(&type);
    EXPECT_EQ(type, NODE_PROCESSING_INSTRUCTION);
    EXPECT_EQ(nameOf(declaration), "xml");
    EXPECT_EQ(lengthOf(nodesAt(document, L"/processing-instruction()").get()), 0);
}

TEST(Nodes, KnowTheirNeighbours) {
    Document const document = documentOf(sample);
    Node const e = nodeAt(document, L"//e");
    Node parent;
    EXPECT_EQ(e->get_parentNode(parent.out()), S_OK);
    EXPECT_EQ(nameOf(parent), "p:a");
    Node grandparent;
    EXPECT_EQ(parent->get_parentNode(grandparent.out()), S_OK);
    EXPECT_TRUE(isSame(grandparent, document));
    Ptr<IXMLDOMDocument> owner;
    EXPECT_EQ(e->get_ownerDocument(owner.out()), S_OK);
    EXPECT_TRUE(isSame(owner, document));
}

TEST(Nodes, MissWhatTheyDoNotHave) {
    Document const document = documentOf(sample);
    Node node;
    EXPECT_EQ(document->get_parentNode(node.out()), S_FALSE);
    EXPECT_EQ(nodeAt(document, L"/*/@*")->get_parentNode(node.out()), S_FALSE);
    Ptr<IXMLDOMDocument> owner;
    EXPECT_EQ(document->get_ownerDocument(owner.out()), S_FALSE);
    Map map;
    EXPECT_EQ(document->get_attributes(map.out()), S_FALSE);
    EXPECT_EQ(nodeAt(document, L"/*/text()")->get_attributes(map.out()), S_FALSE);
    EXPECT_EQ(document->selectSingleNode(_bstr_t{L"none"}, node.out()), S_FALSE);
    EXPECT_EQ(node.get(), nullptr);
    Ptr<IXMLDOMElement> root;
    EXPECT_EQ(newDocument()->get_documentElement(root.out()), S_FALSE);
    VARIANT type{};
    EXPECT_EQ(nodeAt(document, L"//e")->get_dataType(&type), S_FALSE);
    EXPECT_EQ(type.vt, VT_NULL);
}

TEST(Nodes, AnswerWhatNeverMisses) {
    Document const document = newDocument();
    EXPECT_EQ(textOf(document), "");
    EXPECT_EQ(xmlOf(document), "");
    EXPECT_EQ(lengthOf(nodesAt(document, L"//*").get()), 0);
    List children;
    EXPECT_EQ(nodeAt(documentOf(L"<a b='1'/>"), L"//@b")->get_childNodes(children.out()), S_OK);
    EXPECT_EQ(lengthOf(children.get()), 0);
}

TEST(Nodes, RefuseNullPointers) {
    Document const document = documentOf(L"<a b='1'/>");
    Node const a = nodeAt(document, L"a");
    EXPECT_EQ(a->get_nodeName(nullptr), E_POINTER);
    EXPECT_EQ(a->get_nodeType(nullptr), E_POINTER);
    EXPECT_EQ(a->get_parentNode(nullptr), E_POINTER);
    EXPECT_EQ(a->get_childNodes(nullptr), E_POINTER);
    EXPECT_EQ(a->get_attributes(nullptr), E_POINTER);
    EXPECT_EQ(a->get_ownerDocument(nullptr), E_POINTER);
    EXPECT_EQ(a->get_text(nullptr), E_POINTER);
    EXPECT_EQ(a->get_nodeTypedValue(nullptr), E_POINTER);
    EXPECT_EQ(a->get_dataType(nullptr), E_POINTER);
    EXPECT_EQ(a->get_xml(nullptr), E_POINTER);
    EXPECT_EQ(a->selectNodes(_bstr_t{L"b"}, nullptr), E_POINTER);
    EXPECT_EQ(a->selectSingleNode(_bstr_t{L"b"}, nullptr), E_POINTER);
    EXPECT_EQ(a->QueryInterface(IID_IXMLDOMNode, nullptr), E_POINTER);
    EXPECT_EQ(document->get_documentElement(nullptr), E_POINTER);
    EXPECT_EQ(document->createNode(variantOf(LONG{1}), _bstr_t{L"x"}, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(document->createAttribute(_bstr_t{L"x"}, nullptr), E_POINTER);
    EXPECT_EQ(document->load(variantOf(_bstr_t{L"x"}), nullptr), E_POINTER);
    EXPECT_EQ(document->loadXML(_bstr_t{L"<x/>"}, nullptr), E_POINTER);
    EXPECT_EQ(document->get_parseError(nullptr), E_POINTER);
    EXPECT_EQ(document->get_preserveWhiteSpace(nullptr), E_POINTER);
    EXPECT_EQ(document->getProperty(_bstr_t{L"NewParser"}, nullptr), E_POINTER);
    EXPECT_EQ(xmlOf(a), "<a b=\"1\"/>") << "nothing was loaded";
    List const nodes = nodesAt(a, L".");
    EXPECT_EQ(nodes->get_item(0, nullptr), E_POINTER);
    EXPECT_EQ(nodes->get_length(nullptr), E_POINTER);
    List children;
    a->get_childNodes(children.out());
    EXPECT_EQ(children->get_item(0, nullptr), E_POINTER);
    EXPECT_EQ(children->get_length(nullptr), E_POINTER);
    Map const map = attributesOf(a);
    EXPECT_EQ(map->get_item(0, nullptr), E_POINTER);
    EXPECT_EQ(map->get_length(nullptr), E_POINTER);
    EXPECT_EQ(map->getNamedItem(_bstr_t{L"b"}, nullptr), E_POINTER);
    Ptr<IXMLDOMParseError> error;
    ASSERT_EQ(document->get_parseError(error.out()), S_OK);
    EXPECT_EQ(error->get_errorCode(nullptr), E_POINTER);
    EXPECT_EQ(error->get_reason(nullptr), E_POINTER);
    EXPECT_EQ(error->get_srcText(nullptr), E_POINTER);
    EXPECT_EQ(error->get_url(nullptr), E_POINTER);
    EXPECT_EQ(error->get_line(nullptr), E_POINTER);
    EXPECT_EQ(error->get_linepos(nullptr), E_POINTER);
    EXPECT_EQ(error->get_filepos(nullptr), E_POINTER);
}

TEST(Queries, RefuseWhatGivesNoNodes) {
    wchar_t const* const rows[] = {
        L"",       L"a[", L"count(//a)", L"'x'",        L"p:a",       L"$v",           L"1 + 1",
        L"true()", L"//", L"current()",  L"key('a',1)", L"unknown()", L"document('x')"};
    Document const document = documentOf(L"<a xmlns:p='u'/>");
    for (wchar_t const* const expression : rows) {
        List nodes = nodesAt(document, L".");
        IXMLDOMNodeList* list = nodes;
        EXPECT_EQ(document->selectNodes(_bstr_t{expression}, &list), E_FAIL) << utf8(expression);
        EXPECT_EQ(list, nullptr);
        EXPECT_NE(takeErrorText(), "") << utf8(expression);
        IXMLDOMNode* node = document;
        EXPECT_EQ(document->selectSingleNode(_bstr_t{expression}, &node), E_FAIL);
        EXPECT_EQ(node, nullptr);
    }
    EXPECT_EQ(document->selectNodes(nullptr, List{}.out()), E_FAIL);
}

} // namespace tibxml::com::test
