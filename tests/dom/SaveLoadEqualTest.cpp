// Whatever a tree is made of, saving it and loading what was saved gives an equal tree.
#include "EngineTest.h"

#include <TibXml/platform/Stream.h>

#include <random>

namespace {

class Generator {
public:
    explicit Generator(unsigned seed) : random_{seed} {}

    std::wstring document() {
        std::wstring text = chance(2) ? L"<?xml version=\"1.0\" encoding=\"" +
                                            std::wstring{pick(encodings)} + L"\"?>"
                                      : L"";
        return text + L"<!--before-->" + element(0) + L"<?after it?>";
    }

private:
    template <std::size_t Size>
    wchar_t const* pick(wchar_t const* const (&choices)[Size]) {
        return choices[random_() % Size];
    }

    bool chance(unsigned in) { return random_() % in == 0; }

    std::wstring element(int depth) {
        std::wstring const name = pick(names);
        std::wstring text = L"<" + name + L" xmlns:p=\"urn:p\"";
        for (wchar_t const* const attribute : {L"k", L"p:k", L"xml:space"}) {
            if (!chance(3)) continue;
            std::wstring const value = attribute == std::wstring{L"xml:space"}
                                           ? (chance(2) ? L"preserve" : L"default")
                                           : pick(values);
            text += L" " + std::wstring{attribute} + L"=\"" + value + L"\"";
        }
        return text + L">" + content(depth) + L"</" + name + L">";
    }

    std::wstring content(int depth) {
        std::wstring text;
        for (auto left = random_() % 5; left > 0 && depth < 5; --left) {
            text += chance(2) ? element(depth + 1) : std::wstring{pick(pieces)};
        }
        return text;
    }

    static constexpr wchar_t const* encodings[] = {L"UTF-8", L"UTF-16", L"ISO-8859-1", L"US-ASCII"};
    static constexpr wchar_t const* names[] = {L"a", L"p:b", L"long-name.1", L"e"};
    static constexpr wchar_t const* values[] = {
        L"", L"1", L" a  b ", L"&#9;&#10;&#13;", L"&lt;&amp;&gt;&quot;'", L"\x20AC\x1F600"};
    static constexpr wchar_t const* pieces[] = {L"text",
                                                L"  ",
                                                L"\n\t",
                                                L"&#13;",
                                                L"&#32;",
                                                L"x &lt; y &amp; z",
                                                L"\xE9\x20AC\x1F600",
                                                L"<![CDATA[a < b]]>",
                                                L"<![CDATA[ ]]>",
                                                L"<!--comment-->",
                                                L"<?go on?>",
                                                L" lead",
                                                L"]]&gt;"};

    std::mt19937 random_;
};

/// Everything that can be seen of a tree, with neighbouring texts as one.
void describe(WXmlNode const& node, std::string& out) {
    std::vector<CString> names;
    out += "<" + utf8(node.GetName());
    node.GetAttributes(names);
    for (CString const& name : names)
        out += " " + utf8(name) + "=" + utf8(node.Attribute(L"@" + name).GetString());
    out += ">";
    bool afterText = false;
    for (WXmlNode const& child : node.GetNodes(L"node()")) {
        bool const isText = child.GetName() == L"#text";
        if (child.GetName().GetAt(0) != L'#' && child.DoesNodeExist(L"self::*")) {
            describe(child, out);
        } else {
            out += isText && afterText ? "" : "|" + utf8(child.GetName()) + ":";
            out += utf8(child.Value().GetString());
        }
        afterText = isText;
    }
    out += "</>";
}

std::string describe(WXmlDoc const& document) {
    std::string out;
    describe(document.GetRootNode(), out);
    return out;
}

void expectEqualAfterSaving(std::wstring const& xml, bool preserveWhiteSpace) {
    WXmlDoc document{preserveWhiteSpace};
    ASSERT_TRUE(document.LoadFromString(xml.c_str())) << utf8(xml);
    WXmlDoc fromString{preserveWhiteSpace};
    ASSERT_TRUE(fromString.LoadFromString(document.SaveToString())) << utf8(xml);
    EXPECT_EQ(describe(fromString), describe(document)) << utf8(xml);
    EXPECT_EQ(utf8(fromString.SaveToString()), utf8(document.SaveToString()));
    EnginePtr<IStream> const stream{SHCreateMemStream(nullptr, 0), false};
    ASSERT_TRUE(document.Save(stream)) << utf8(xml);
    LARGE_INTEGER const start{0};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    WXmlDoc fromStream{preserveWhiteSpace};
    ASSERT_TRUE(fromStream.Load(stream)) << utf8(xml);
    EXPECT_EQ(describe(fromStream), describe(document)) << utf8(xml);
}

TEST(SaveLoadEqual, GeneratedDocuments) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        std::wstring const xml = Generator{seed}.document();
        expectEqualAfterSaving(xml, true);
        expectEqualAfterSaving(xml, false);
        if (HasFailure()) return;
    }
}

} // namespace
