// Every character in every place, at every position of a text.
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;

namespace {

struct Row {
    char character;
    char const* inText;
    char const* inValue;
};

constexpr Row rows[] = {
    {'&', "&amp;", "&amp;"}, {'<', "&lt;", "&lt;"}, {'>', "&gt;", "&gt;"}, {'"', "\"", "&quot;"},
    {'\'', "'", "'"},        {'\t', "\t", "&#9;"},  {'\n', "\n", "&#10;"}, {'\r', "&#13;", "&#13;"},
};

std::string expected(char c, bool inValue) {
    for (Row const& row : rows)
        if (row.character == c) return inValue ? row.inValue : row.inText;
    return {c};
}

std::string written(std::string_view value, bool inValue) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    if (!inValue) return xml(b.document(), b.text(root, value));
    std::string const all = xml(b.document(), b.attribute(root, "a", value));
    return all.substr(3, all.size() - 4);
}

TEST(Escaping, EveryAsciiCharacter) {
    for (int code = 1; code < 128; ++code) {
        char const c = static_cast<char>(code);
        bool const allowed = code >= ' ' || c == '\t' || c == '\n' || c == '\r';
        if (!allowed) continue;
        EXPECT_EQ(written({&c, 1}, false), expected(c, false)) << code;
        EXPECT_EQ(written({&c, 1}, true), expected(c, true)) << code;
    }
}

// Short texts lie in the node and long ones elsewhere; both are searched in blocks.
void expectAt(char c, std::size_t at, std::size_t length) {
    for (bool const inValue : {false, true}) {
        std::string plain(length, 'x');
        plain[at] = c;
        std::string escaped(length, 'x');
        escaped.replace(at, 1, expected(c, inValue));
        EXPECT_EQ(written(plain, inValue), escaped);
    }
}

TEST(Escaping, EveryPositionInEveryLength) {
    for (char const c : {'&', '<', '>', '"', '\t', '\n', '\r', '\x7F', '!', '#', '=', '?'}) {
        for (std::size_t length = 1; length <= 40; ++length) {
            for (std::size_t at = 0; at < length; ++at)
                expectAt(c, at, length);
        }
    }
}

TEST(Escaping, PairsOfSpecialCharacters) {
    for (Row const& first : rows) {
        for (Row const& second : rows) {
            std::string const both{'a', first.character, second.character};
            std::string inText = "a";
            EXPECT_EQ(written(both, false), inText.append(first.inText).append(second.inText));
            std::string inValue = "a";
            EXPECT_EQ(written(both, true), inValue.append(first.inValue).append(second.inValue));
        }
    }
}

TEST(Escaping, OtherCharactersStayAsTheyAre) {
    for (std::string const text :
         {"\xC3\xA4\xC3\xB6\xC3\xBC", "\xE2\x82\xAC", "\xF0\x9F\x98\x80\xF0\x9F\x98\x81 0123456789",
          "\xC2\x85", "\xE2\x80\xA8", "\xC2\xBC\xC2\xBE\xC2\xA6\xC2\xA2\xC2\x8D\xC2\x8A"}) {
        EXPECT_EQ(written(text, false), text);
        EXPECT_EQ(written(text, true), text);
    }
}

TEST(Escaping, EndOfCdataInText) {
    EXPECT_EQ(written("a]]>b", false), "a]]&gt;b");
}

TEST(Escaping, EndOfCdataIsSplit) {
    struct Split {
        char const* data;
        char const* xml;
    };

    Split const splits[] = {
        {"", "<![CDATA[]]>"},
        {"]]", "<![CDATA[]]]]>"},
        {"]]>", "<![CDATA[]]]]><![CDATA[>]]>"},
        {"a]]>b]]>c", "<![CDATA[a]]]]><![CDATA[>b]]]]><![CDATA[>c]]>"},
        {"]]]>", "<![CDATA[]]]]]><![CDATA[>]]>"},
    };
    for (auto const& [data, text] : splits) {
        Builder b;
        Node* const root = b.element(b.top(), "r");
        EXPECT_EQ(xml(b.document(), b.data(root, tree::NodeKind::cdata, data)), text);
    }
}

TEST(Escaping, ValuesAndTextsAreReadBackExactly) {
    std::string const all = "\t\n\r &<>\"']]>&amp;&#10;\xE2\x82\xAC end ";
    Builder b;
    Node* const root = b.element(b.top(), "r");
    b.attribute(root, "a", all);
    b.text(root, all);
    auto const again = parse(xml(b.document()));
    EXPECT_EQ(again->documentElement()->firstAttribute()->text(), all);
    EXPECT_EQ(again->documentElement()->firstChild()->text(), all);
}

} // namespace

} // namespace tibxml::output::test
