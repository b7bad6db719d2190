// Generated trees from XML to JSON values, through JSON text, and back.
#include "EngineTest.h"

#include <TibXml/tibutils/Json.h>

#include <random>

namespace {

using TibUtils::Variant;

class Generator {
public:
    explicit Generator(std::uint32_t seed) : random_{seed} {}

    /// An element without texts, with an end tag always, as the conversion writes it.
    CString element(int depth) {
        CString const name = someName();
        CString xml = L"<" + name;
        if (depth == 0) xml += L" xmlns:p=\"urn:p\"";
        for (int i = below(4); i > 0; --i)
            xml += L" a" + CString(std::to_wstring(i).c_str()) + L"=\"" + someValue() + L"\"";
        xml += L">";
        for (int i = depth > 6 ? 0 : below(5); i > 0; --i)
            xml += element(depth + 1);
        return xml + L"</" + name + L">";
    }

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

    CString someName() {
        constexpr wchar_t const* names[] = {L"a", L"item", L"p:b", L"\u00fcber", L"_x-1.y"};
        return names[below(5)];
    }

    CString someValue() {
        constexpr wchar_t const* parts[] = {L"",     L"x",      L" ",          L"&amp;",  L"&lt;",
                                            L"&gt;", L"&#9;",   L"&#10;",      L"&quot;", L"'",
                                            L"\\",   L"\u20ac", L"\U0001f600", L"&#13;",  L"{}"};
        CString value;
        for (int i = below(6); i > 0; --i)
            value += parts[below(15)];
        return value;
    }

    std::mt19937 random_;
};

class JsonRoundTrip : public testing::TestWithParam<std::uint32_t> {};

TEST_P(JsonRoundTrip, GivesTheSameElementsAndAttributes) {
    CString const xml = Generator{GetParam()}.element(0);
    Variant value;
    ASSERT_TRUE(JsonConvertFromXml(loaded(xml).GetRootNode(), value));
    std::string const json = TibUtils::Json::Write(value, static_cast<int>(GetParam() % 3));
    CString back;
    ASSERT_TRUE(JsonConvertToXml(TibUtils::Json::Parse(json), back));
    EXPECT_EQ(utf8(back), utf8(xml));
    Variant again;
    ASSERT_TRUE(JsonConvertFromXml(loaded(back).GetRootNode(), again));
    EXPECT_EQ(TibUtils::Json::Write(again), TibUtils::Json::Write(value));
}

INSTANTIATE_TEST_SUITE_P(Seeds, JsonRoundTrip, testing::Range<std::uint32_t>(0, 100));

TEST(JsonRoundTrip, TextsDoNotTravel) {
    Variant value;
    JsonConvertFromXml(loaded(L"<a k='v'>one<b>two</b><!--three--><?four five?></a>").GetRootNode(),
                       value);
    CString xml;
    JsonConvertToXml(value, xml);
    EXPECT_EQ(utf8(xml), R"(<a k="v"><b></b></a>)");
}

TEST(JsonRoundTrip, NamespacesTravelAsAttributes) {
    WXmlDoc const document = loaded(L"<p:a xmlns:p='urn:p' xmlns='urn:d'><b p:c='1'/></p:a>");
    Variant value;
    JsonConvertFromXml(document.GetRootNode(), value);
    CString xml;
    JsonConvertToXml(value, xml);
    WXmlDoc back = loaded(xml);
    back.SetSelectionNamespaces(L"xmlns:x='urn:p' xmlns:y='urn:d'");
    EXPECT_TRUE(back.GetRootNode().DoesNodeExist(L"/x:a/y:b[@x:c='1']"));
}

} // namespace
