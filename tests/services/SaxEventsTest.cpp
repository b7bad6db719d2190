// What callbacks get from well-formed documents.
#include "SaxRecorder.h"

#include <memory>
#include <type_traits>

namespace {

std::string eventsOf(wchar_t const* xml) {
    SaxRecorder recorder;
    EXPECT_TRUE(recorder.sax.ParseString(xml)) << utf8(xml);
    return recorder.take();
}

struct Row {
    char const* what;
    wchar_t const* xml;
    char const* events;
};

TEST(SaxEvents, AreThoseOfTheDocument) {
    Row const rows[] = {
        {"one element", L"<a/>", "document <a></a> end"},
        {"an element with an end tag", L"<a></a>", "document <a></a> end"},
        {"elements within", L"<a><b/><c><d/></c></a>", "document <a><b></b><c><d></d></c></a> end"},
        {"text", L"<a>text</a>", "document <a>text</a> end"},
        {"white space inside the root", L"<a> <b/>\n\t</a>", "document <a> <b></b>\n\t</a> end"},
        {"white space around the root", L"\n <a/> \n", "document <a></a> end"},
        {"CDATA", L"<a>x<![CDATA[ <b> ]]>y</a>", "document <a>x <b> y</a> end"},
        {"an empty CDATA section", L"<a><![CDATA[]]></a>", "document <a></a> end"},
        {"references", L"<a>&lt;&amp;&gt;&quot;&apos;&#65;&#x20AC;</a>",
         "document <a><&>\"'A\u20AC</a> end"},
        {"line ends", L"<a>1\r\n2\r3\n4<![CDATA[\r\n5\r]]></a>",
         "document <a>1\n2\n3\n4\n5\n</a> end"},
        {"a return as a reference stays", L"<a>&#13;&#10;</a>", "document <a>\r\n</a> end"},
        {"attributes in source order", L"<a z='1' b='2' a='3'/>",
         "document <a z='1' b='2' a='3'></a> end"},
        {"normalised attribute values", L"<a b='1\n2\t3\r\n4' c='&#10;&lt;&amp;'/>",
         "document <a b='1 2 3 4' c='\n<&'></a> end"},
        {"an empty attribute value", L"<a b=''/>", "document <a b=''></a> end"},
        {"prefixes", L"<p:a xmlns:p='urn:p' p:b='1' c='2'><p:d/></p:a>",
         "document <a b='1' c='2'><d></d></a> end"},
        {"declarations are no attributes", L"<a xmlns='urn:d' xmlns:p='urn:p'/>",
         "document <a></a> end"},
        {"xml:lang", L"<a xml:lang='de'/>", "document <a lang='de'></a> end"},
        {"attributes of one local name", L"<a xmlns:p='u' b='1' p:b='2'/>",
         "document <a b='1' b='2'></a> end"},
        {"comments are not told", L"<!--1--><a>x<!--2-->y</a><!--3-->", "document <a>xy</a> end"},
        {"processing instructions are not told", L"<?t d?><a>x<?t d?>y</a><?t d?>",
         "document <a>xy</a> end"},
        {"the declaration is not told", L"<?xml version='1.0' encoding='UTF-16'?><a/>",
         "document <a></a> end"},
        {"names beyond ASCII", L"<\u00E4 \u0416='\U0001F600'>\u4E2D\U0001F600</\u00E4>",
         "document <\u00E4 \u0416='\U0001F600'>\u4E2D\U0001F600</\u00E4> end"},
    };
    for (Row const& row : rows) {
        EXPECT_EQ(eventsOf(row.xml), row.events) << row.what;
    }
}

TEST(SaxEvents, GiveAnElementWithoutAttributesAnEmptySequence) {
    WXmlSax sax;
    std::vector<std::size_t> counts;
    auto start = [&](WXmlSaxText const*, std::vector<WXmlSaxAttribute> const* attributes) {
        counts.push_back(attributes->size());
        return true;
    };
    sax.OnStartElement.Bind(start);
    EXPECT_TRUE(sax.ParseString(L"<a b='1' c='2'><d/><e f='3'/><g xmlns='urn:g'/></a>"));
    EXPECT_EQ(counts, (std::vector<std::size_t>{2, 0, 1, 0}));
}

TEST(SaxEvents, PassTheContext) {
    WXmlSax sax;
    int calls = 0;
    sax.OnStartDocument = {&calls, [](void* context) { return ++*static_cast<int*>(context) > 0; }};
    EXPECT_TRUE(sax.ParseString(L"<a/>"));
    EXPECT_EQ(calls, 1);
}

TEST(SaxEvents, NeedNoCallbacks) {
    WXmlSax sax;
    EXPECT_TRUE(sax.ParseString(L"<a b='1'>text<c/></a>"));
    EXPECT_FALSE(sax.ParseString(L"<a b='1'>text<c></a>"));
}

TEST(SaxEvents, ReachEveryCallbackByItself) {
    constexpr wchar_t const* xml = L"<a b='1'>x<c/></a>";
    int calls = 0;
    auto count = [&](auto...) { return ++calls > 0; };
    auto const callsOf = [&](auto WXmlSax::*slot) {
        WXmlSax sax;
        (sax.*slot).Bind(count);
        calls = 0;
        EXPECT_TRUE(sax.ParseString(xml));
        return calls;
    };
    EXPECT_EQ(callsOf(&WXmlSax::OnStartDocument), 1);
    EXPECT_EQ(callsOf(&WXmlSax::OnEndDocument), 1);
    EXPECT_EQ(callsOf(&WXmlSax::OnStartElement), 2);
    EXPECT_EQ(callsOf(&WXmlSax::OnEndElement), 2);
    EXPECT_EQ(callsOf(&WXmlSax::OnCharacters), 1);
}

TEST(SaxEvents, TakeACallbackThatIsChangedOnTheWay) {
    WXmlSax sax;
    int ends = 0;
    auto end = [&](WXmlSaxText const*) { return ++ends > 0; };
    auto start = [&](WXmlSaxText const* name, std::vector<WXmlSaxAttribute> const*) {
        if (name->text[0] == L'c') sax.OnEndElement.Bind(end);
        return true;
    };
    sax.OnStartElement.Bind(start);
    EXPECT_TRUE(sax.ParseString(L"<a><b/><c/></a>"));
    EXPECT_EQ(ends, 2);
}

TEST(SaxEvents, DeliverLongTextsInPieces) {
    std::wstring text;
    for (int i = 0; i != 50'000; ++i)
        text += L"a\u00E4\u20AC\U0001F600"[i % 4];
    for (std::wstring const& xml : {L"<a>" + text + L"</a>", L"<a><![CDATA[" + text + L"]]></a>"}) {
        SaxRecorder recorder;
        EXPECT_TRUE(recorder.sax.ParseString(xml.c_str()));
        EXPECT_LE(recorder.longest, 4096);
        EXPECT_EQ(recorder.take(), "document <a>" + utf8(text) + "</a> end");
    }
}

TEST(SaxEvents, DeliverLongNamesAndValuesWhole) {
    std::wstring const name(50'000, L'n');
    std::wstring const value(3'000'000, L'\u00E4');
    std::wstring const xml = L"<" + name + L" " + name + L"='" + value + L"'/>";
    EXPECT_EQ(eventsOf(xml.c_str()), "document <" + utf8(name) + " " + utf8(name) + "='" +
                                         utf8(value) + "'></" + utf8(name) + "> end");
}

TEST(SaxEvents, KeepManyNamesApart) {
    std::wstring xml = L"<r>";
    std::string expected = "document <r>";
    for (int round = 0; round != 2; ++round) {
        for (int i = 0; i != 3000; ++i) {
            std::wstring const name = L"e" + std::to_wstring(i);
            xml += L"<" + name + L" a" + std::to_wstring(i) + L"='" + std::to_wstring(i) + L"'/>";
            expected += "<" + utf8(name) + " a" + std::to_string(i) + "='" + std::to_string(i) +
                        "'></" + utf8(name) + ">";
        }
    }
    EXPECT_EQ(eventsOf((xml + L"</r>").c_str()), expected + "</r> end");
}

TEST(SaxEvents, DeliverManyAttributes) {
    std::wstring xml = L"<a";
    std::string expected = "document <a";
    for (int i = 0; i != 5000; ++i) {
        xml += L" b" + std::to_wstring(i) + L"='\u00E4" + std::to_wstring(i) + L"'";
        expected += " b" + std::to_string(i) + "='\u00E4" + std::to_string(i) + "'";
    }
    EXPECT_EQ(eventsOf((xml + L"/>").c_str()), expected + "></a> end");
}

TEST(SaxEvents, MayStartAnotherParseWithinACallback) {
    WXmlSax sax;
    SaxRecorder inner;
    auto start = [&](WXmlSaxText const*, std::vector<WXmlSaxAttribute> const* attributes) {
        EXPECT_TRUE(inner.sax.ParseString(L"<x y='2' z='3'/>"));
        EXPECT_EQ(attributes->size(), 1U);
        return attributes->front().value[0] == L'1';
    };
    sax.OnStartElement.Bind(start);
    EXPECT_TRUE(sax.ParseString(L"<a b='1'><c d='1'/></a>"));
    EXPECT_EQ(inner.take(), "document <x y='2' z='3'></x> enddocument <x y='2' z='3'></x> end");
}

TEST(SaxEvents, EndWithAnObjectThatIsDestroyedInACallback) {
    auto sax = std::make_unique<WXmlSax>();
    int calls = 0;
    auto start = [&](WXmlSaxText const*, std::vector<WXmlSaxAttribute> const*) {
        ++calls;
        sax.reset();
        return true;
    };
    sax->OnStartElement.Bind(start);
    EXPECT_FALSE(sax->ParseString(L"<a><b/></a>"));
    EXPECT_EQ(calls, 1);
}

} // namespace
