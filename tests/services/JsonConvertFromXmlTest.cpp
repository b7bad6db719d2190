#include "EngineTest.h"

#include <TibXml/tibutils/Json.h>

namespace {

using TibUtils::Variant;
using TibUtils::Json::Object;

std::string jsonOf(WXmlNode const& node) {
    Variant value;
    EXPECT_TRUE(JsonConvertFromXml(node, value));
    return TibUtils::Json::Write(value);
}

TEST(JsonConvertFromXml, DescribesElements) {
    struct Row {
        wchar_t const* xml;
        std::string json;
    };

    Row const rows[] = {
        {L"<a/>", R"({"tag":"a"})"},
        {L"<a></a>", R"({"tag":"a"})"},
        {L"<a x='1' b='2'/>", R"({"tag":"a","attributes":{"x":"1","b":"2"}})"},
        {L"<a x=''/>", R"({"tag":"a","attributes":{"x":""}})"},
        {L"<a x='&quot;&lt;&amp;\u00fc'/>",
         "{\"tag\":\"a\",\"attributes\":{\"x\":\"\\\"<&\u00fc\"}}"},
        {L"<a><b/><c/></a>", R"({"tag":"a","children":[{"tag":"b"},{"tag":"c"}]})"},
        {L"<a><b><c y='1'/></b></a>",
         R"({"tag":"a","children":[{"tag":"b","children":[{"tag":"c","attributes":{"y":"1"}}]}]})"},
        // Any child node makes "children", only elements are in it.
        {L"<a>text</a>", R"({"tag":"a","children":[]})"},
        {L"<a><!--c--></a>", R"({"tag":"a","children":[]})"},
        {L"<a><?p i?></a>", R"({"tag":"a","children":[]})"},
        {L"<a><![CDATA[x]]></a>", R"({"tag":"a","children":[]})"},
        {L"<a>1<b>2</b>3<!--4--><c/></a>",
         R"({"tag":"a","children":[{"tag":"b","children":[]},{"tag":"c"}]})"},
        // Qualified names; declarations are attributes.
        {L"<p:a xmlns:p='urn:p' xmlns='urn:d' p:x='1'><b/></p:a>",
         R"({"tag":"p:a","attributes":{"xmlns:p":"urn:p","xmlns":"urn:d","p:x":"1"},)"
         R"("children":[{"tag":"b"}]})"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(jsonOf(loaded(row.xml).GetRootNode()), row.json);
}

TEST(JsonConvertFromXml, DescribesAPartOfADocument) {
    WXmlDoc const document = loaded(L"<a><b x='1'><c/></b><d/></a>");
    EXPECT_EQ(jsonOf(nodeAt(document, L"b")),
              R"({"tag":"b","attributes":{"x":"1"},"children":[{"tag":"c"}]})");
}

TEST(JsonConvertFromXml, ReplacesWhatTheValueWas) {
    Variant value = L"old";
    EXPECT_TRUE(JsonConvertFromXml(loaded(L"<a/>").GetRootNode(), value));
    EXPECT_EQ(TibUtils::Json::Write(value), R"({"tag":"a"})");
    EXPECT_TRUE(JsonConvertFromXml(loaded(L"<b/>").GetRootNode(), value));
    EXPECT_EQ(TibUtils::Json::Write(value), R"({"tag":"b"})");
}

// As deep as elements may lie, doubled again and again.
TEST(JsonConvertFromXml, DescribesAnyDepth) {
    constexpr int doublings = 8;
    WXmlDoc const document = loaded(L"<a><a/></a>");
    WXmlNode const root = document.GetRootNode();
    WXmlNode deepest = root.GetNode(L"a");
    for (int i = 1; i < doublings; ++i) {
        WXmlNode copy = root.Clone(true);
        WXmlNode const next = copy.GetNode(L"descendant-or-self::*[not(*)]");
        copy.Graft(deepest, -1);
        deepest = next;
    }
    Variant value;
    EXPECT_TRUE(JsonConvertFromXml(root, value));
    CString xml;
    EXPECT_TRUE(JsonConvertToXml(value, xml));
    EXPECT_EQ(xml.GetLength(), (1 << doublings) * 7);
}

TEST(JsonConvertFromXml, AnEmptyHandleRaises) {
    Variant value = 1;
    EXPECT_EQ(codeOf([&] { JsonConvertFromXml(WXmlNode{}, value); }), E_POINTER);
    EXPECT_EQ(TibUtils::Json::Write(value), "{}");
}

TEST(JsonConvertFromXml, OnlyElementsHaveAttributes) {
    WXmlDoc const document = loaded(L"<a x='1'>text<!--c--></a>");
    for (wchar_t const* path : {L"text()", L"@x", L"comment()", L"/"}) {
        Variant value;
        EXPECT_EQ(codeOf([&] { JsonConvertFromXml(nodeAt(document, path), value); }), E_POINTER);
        EXPECT_TRUE(value.Get<Object>().HasValue(L"tag")) << utf8(path);
        EXPECT_EQ(value.Get<Object>().GetSize(), 1U) << utf8(path);
    }
}

// An element whose engine object fails where a test wants it.
class FailingElement : public testing::Test {
protected:
    FailingElement() {
        element->name = L"a";
        element->attributes = fake::make<fake::Map, IXMLDOMNamedNodeMap>(behaviour, map);
        element->children = fake::make<fake::List, IXMLDOMNodeList>(behaviour, children);
        element->selectedNodes = fake::make<fake::List, IXMLDOMNodeList>(ofResult, result);
        fake::Node* child = nullptr;
        children->nodes.push_back(fake::make<fake::Node, IXMLDOMNode>(behaviour, child));
    }

    void addAttribute() {
        fake::Attribute* attribute = nullptr;
        WXmlNodePtr const pointerToIt =
            fake::make<fake::Attribute, IXMLDOMNode>(ofAttribute, attribute);
        attribute->name = L"x";
        attribute->value = _variant_t{L"1"};
        map->attributes.push_back(pointerToIt);
        map->named = pointerToIt;
    }

    HRESULT code() {
        return codeOf([&] { JsonConvertFromXml(WXmlNode{pointer}, value); });
    }

    std::string json() const { return TibUtils::Json::Write(value); }

    std::shared_ptr<fake::Behaviour> behaviour = std::make_shared<fake::Behaviour>();
    std::shared_ptr<fake::Behaviour> ofAttribute = std::make_shared<fake::Behaviour>();
    std::shared_ptr<fake::Behaviour> ofResult = std::make_shared<fake::Behaviour>();
    fake::Element* element = nullptr;
    WXmlNodePtr pointer = fake::make<fake::Element, IXMLDOMNode>(behaviour, element);
    fake::Map* map = nullptr;
    fake::List* children = nullptr;
    fake::List* result = nullptr;
    Variant value = L"old";
};

TEST_F(FailingElement, WorksWhenNothingFails) {
    addAttribute();
    EXPECT_EQ(code(), S_OK);
    EXPECT_EQ(json(), R"({"tag":"a","attributes":{"x":"1"},"children":[]})");
    EXPECT_EQ(element->writtenText, L"child::*");
}

TEST_F(FailingElement, TheName) {
    behaviour->codes["nodeName"] = E_ACCESSDENIED;
    EXPECT_EQ(code(), E_ACCESSDENIED);
    EXPECT_EQ(json(), "{}");
}

TEST_F(FailingElement, AnAttributeThatCannotBeFoundHasNoValue) {
    addAttribute();
    map->named = nullptr;
    EXPECT_EQ(missingTypeOf([&] { JsonConvertFromXml(WXmlNode{pointer}, value); }), "string");
    EXPECT_EQ(json(), R"({"tag":"a"})");
}

TEST_F(FailingElement, AnAttributeThatCannotBeRead) {
    addAttribute();
    ofAttribute->codes["text"] = E_ACCESSDENIED;
    EXPECT_EQ(code(), E_ACCESSDENIED);
    EXPECT_EQ(json(), R"({"tag":"a"})");
}

TEST_F(FailingElement, TheQueryForChildren) {
    addAttribute();
    behaviour->codes["selectNodes"] = E_ACCESSDENIED;
    EXPECT_EQ(code(), E_ACCESSDENIED);
    EXPECT_EQ(json(), R"({"tag":"a","attributes":{"x":"1"}})");
}

TEST_F(FailingElement, NoListOfChildrenIsTheIntegerZero) {
    element->selectedNodes = nullptr;
    EXPECT_EQ(intOf([&] { JsonConvertFromXml(WXmlNode{pointer}, value); }), 0);
    EXPECT_EQ(json(), R"({"tag":"a"})");
}

TEST_F(FailingElement, TheLengthOfTheList) {
    ofResult->codes["length"] = E_ACCESSDENIED;
    EXPECT_EQ(code(), E_ACCESSDENIED);
    EXPECT_EQ(json(), R"({"tag":"a"})");
}

TEST_F(FailingElement, AChildOfTheList) {
    result->nodes.push_back(pointer);
    ofResult->codes["item"] = E_ACCESSDENIED;
    EXPECT_EQ(code(), E_ACCESSDENIED);
    EXPECT_EQ(json(), R"({"tag":"a"})");
    result->nodes.clear();
}

TEST_F(FailingElement, AFailingChildIsNotInTheResult) {
    auto const ofChild = std::make_shared<fake::Behaviour>();
    fake::Element* child = nullptr;
    result->nodes.push_back(fake::make<fake::Element, IXMLDOMNode>(ofChild, child));
    ofChild->codes["nodeName"] = E_ACCESSDENIED;
    EXPECT_EQ(code(), E_ACCESSDENIED);
    EXPECT_EQ(json(), R"({"tag":"a"})");
}

} // namespace
