#include "EngineTest.h"

#include <TibXml/tibutils/Json.h>

namespace {

using TibUtils::Variant;
using TibUtils::Json::Array;
using TibUtils::Json::Object;

std::string xmlOf(Variant const& value) {
    CString xml;
    return JsonConvertToXml(value, xml) ? utf8(xml) : "refused";
}

std::string xmlOf(std::string_view json) {
    return xmlOf(TibUtils::Json::Parse(json));
}

TEST(JsonConvertToXml, WritesElementsAttributesAndChildren) {
    struct Row {
        std::string json;
        std::string xml;
    };

    Row const rows[] = {
        {R"({"tag":"a"})", "<a></a>"},
        {R"({"tag":""})", "<></>"},
        {R"({"tag":"item","attributes":{"id":"7"},"children":[{"tag":"sub"}]})",
         R"(<item id="7"><sub></sub></item>)"},
        // Attributes in their order, names and tags as they are.
        {R"({"tag":"p:a","attributes":{"z":"1","a":"2","p:m":"3","xmlns:p":"urn:p"}})",
         R"(<p:a z="1" a="2" p:m="3" xmlns:p="urn:p"></p:a>)"},
        {R"({"tag":"a b","attributes":{"<":"1"}})", R"(<a b <="1"></a b>)"},
        {R"({"tag":"a","attributes":{"v":"<\"&'>\t\n"}})",
         R"(<a v="&lt;&quot;&amp;'&gt;&#9;&#10;"></a>)"},
        {R"({"tag":"a","attributes":{"v":""}})", R"(<a v=""></a>)"},
        // What is not a string is left out.
        {R"({"tag":"a","attributes":{"n":1,"b":true,"z":null,"o":{},"l":[],"s":"x"}})",
         R"(<a s="x"></a>)"},
        {R"({"tag":"a","attributes":{}})", "<a></a>"},
        {R"({"tag":"a","attributes":["x"]})", "<a></a>"},
        {R"({"tag":"a","attributes":"x"})", "<a></a>"},
        // What is not an element is left out.
        {R"({"tag":"a","children":[]})", "<a></a>"},
        {R"({"tag":"a","children":{"tag":"b"}})", "<a></a>"},
        {R"({"tag":"a","children":"b"})", "<a></a>"},
        {R"({"tag":"a","children":[1,"b",null,true,[{"tag":"c"}],{"tag":"d"}]})", "<a><d></d></a>"},
        {R"({"tag":"a","children":[{},{"tag":1},{"attributes":{"x":"1"}},
             {"children":[{"tag":"lost"}]},{"tag":"b"}]})",
         "<a><b></b></a>"},
        {R"({"tag":"a","children":[{"tag":"b","children":[{"tag":"c"}]},{"tag":"d"}]})",
         "<a><b><c></c></b><d></d></a>"},
        // Other members do not count, and their order does not.
        {R"({"text":"x","children":[{"tag":"b"}],"attributes":{"k":"v"},"tag":"a"})",
         R"(<a k="v"><b></b></a>)"},
    };
    for (Row const& row : rows)
        EXPECT_EQ(xmlOf(row.json), row.xml) << row.json;
}

TEST(JsonConvertToXml, RefusesWhatIsNoElementAndLeavesTheTextAlone) {
    for (char const* json : {"null", "\"a\"", "1", "true", "[]", R"([{"tag":"a"}])", "{}",
                             R"({"tag":1})", R"({"tag":null})", R"({"tag":["a"]})",
                             R"({"Tag":"a"})", R"({"attributes":{"tag":"a"},"children":[]})"}) {
        CString xml = L"before";
        EXPECT_FALSE(JsonConvertToXml(TibUtils::Json::Parse(json), xml)) << json;
        EXPECT_EQ(utf8(xml), "before") << json;
    }
}

TEST(JsonConvertToXml, AppendsToWhatIsThere) {
    CString xml = L"<r>";
    Variant const element = TibUtils::Json::Parse(R"({"tag":"a"})");
    EXPECT_TRUE(JsonConvertToXml(element, xml));
    EXPECT_TRUE(JsonConvertToXml(element, xml));
    EXPECT_EQ(utf8(xml), "<r><a></a><a></a>");
}

TEST(JsonConvertToXml, MayAppendToATextOfTheValueItself) {
    Object object;
    CString tag = L"a";
    object.AddValue(L"tag", tag);
    EXPECT_TRUE(JsonConvertToXml(object, tag));
    EXPECT_EQ(utf8(tag), "a<a></a>");
    EXPECT_EQ(xmlOf(object), "<a></a>");
}

TEST(JsonConvertToXml, AttributesAreReadBackAsTheyWere) {
    for (wchar_t const* value : {L"\"quoted\"", L"a & b &amp; c &#38;", L"<'>", L" \t x \r\n ",
                                 L"\u00fc\u20ac\U0001f600", L"]]>", L"\u0085\u2028\ufffd"}) {
        Object attributes;
        attributes.AddValue(L"v", value);
        Object element;
        element.AddValue(L"tag", L"a");
        element.AddValue(L"attributes", attributes);
        CString xml;
        ASSERT_TRUE(JsonConvertToXml(element, xml));
        EXPECT_EQ(utf8(loaded(xml).GetRootNode().Attribute(L"@v").GetString()), utf8(value));
    }
}

TEST(JsonConvertToXml, WritesAnyDepth) {
    constexpr int depth = 100'000;
    Variant value = TibUtils::Json::Parse(R"({"tag":"a"})");
    for (int i = 1; i < depth; ++i) {
        Array children;
        children.AddValue(std::move(value));
        Object parent;
        parent.AddValue(L"tag", L"a");
        parent.AddValue(L"children", std::move(children));
        value = std::move(parent);
    }
    CString xml;
    EXPECT_TRUE(JsonConvertToXml(value, xml));
    EXPECT_EQ(xml.GetLength(), depth * 7);
    EXPECT_EQ(utf8(xml.Left(9)), "<a><a><a>");
    EXPECT_EQ(utf8(xml.Right(8)), "</a></a>");
}

} // namespace
