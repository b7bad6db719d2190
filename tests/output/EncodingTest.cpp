// Files in other encodings than UTF-8.
#include <string>

#include <gtest/gtest.h>

#include <output/Serializer.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;
using tree::NodeKind;

namespace {

std::string declared(std::string const& encoding) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>";
}

std::string fileOf(std::string const& encoding, std::string const& body) {
    return file(parse(declared(encoding) + body));
}

std::string utf16(std::string const& ascii, bool littleEndian) {
    std::string out;
    for (char const c : ascii) {
        if (!littleEndian) out += '\0';
        out += c;
        if (littleEndian) out += '\0';
    }
    return out;
}

TEST(Encoding, Utf8HasNoMark) {
    std::string const body = "<e>\xE2\x82\xAC\xF0\x9F\x98\x80</e>\n";
    for (char const* name : {"UTF-8", "utf-8", "Utf8"})
        EXPECT_EQ(fileOf(name, body), declared(name) + "\n" + body);
}

TEST(Encoding, Utf16) {
    std::string const text = declared("UTF-16") + "\n<e>x</e>\n";
    EXPECT_EQ(fileOf("UTF-16", "<e>x</e>"), "\xFF\xFE" + utf16(text, true));
    std::string const little = declared("utf-16le") + "\n<e>x</e>\n";
    EXPECT_EQ(fileOf("utf-16le", "<e>x</e>"), utf16(little, true));
    std::string const big = declared("UTF-16BE") + "\n<e>x</e>\n";
    EXPECT_EQ(fileOf("UTF-16BE", "<e>x</e>"), utf16(big, false));
}

TEST(Encoding, Utf16Surrogates) {
    std::string const bytes =
        fileOf("UTF-16BE", "<e>\xE2\x82\xAC\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF</e>");
    using namespace std::string_literals;
    EXPECT_NE(bytes.find("\x20\xAC\xD8\x3D\xDE\x00\xDB\xFF\xDF\xFF\x00<"s), std::string::npos);
}

struct Row {
    char const* encoding;
    char const* text;    // UTF-8
    char const* written; // in the encoding
};

TEST(Encoding, MissingCharactersBecomeReferences) {
    Row const rows[] = {
        {"ISO-8859-1", "\xC3\xA4\xE2\x82\xAC", "\xE4&#8364;"},
        {"iso8859-1", "\xC3\xA4\xE2\x82\xAC", "\xE4&#8364;"},
        {"US-ASCII", "a\xC3\xA4<", "a&#228;&lt;"},
        {"windows-1252", "\xE2\x82\xAC\xC4\x80", "\x80&#256;"},
        {"ISO-8859-15", "\xE2\x82\xAC\xC2\xA4", "\xA4&#164;"},
        {"ISO-8859-5", "\xD0\x96\xC3\xA4", "\xB6&#228;"},
        {"KOI8-R", "\xD0\x96\xF0\x9F\x98\x80", "\xF6&#128512;"},
        {"Shift_JIS", "\xE3\x81\x82\xC3\xA4", "\x82\xA0&#228;"},
        {"EUC-JP", "\xE3\x81\x82\xF0\x9F\x98\x80", "\xA4\xA2&#128512;"},
        {"GB18030", "\xE4\xBD\xA0\xC3\xA4", "\xC4\xE3\x81\x30\x8A\x31"},
        {"ISO-2022-JP", "\xE3\x81\x82", "\x1B$B$\"\x1B(B"},
        {"ISO-8859-1", "\xF3\xA0\x81\x81", "&#917569;"},
    };
    for (auto const& [encoding, text, written] : rows) {
        Builder b;
        b.data(b.top(), NodeKind::declaration,
               "version=\"1.0\" encoding=\"" + std::string{encoding} + "\"");
        Node* const root = b.element(b.top(), "e");
        b.attribute(root, "a", text);
        b.text(root, text);
        std::string const bytes = file(b.document());
        std::string const w = written;
        std::string expected = declared(encoding);
        expected.append("\n<e a=\"").append(w).append("\">").append(w).append("</e>\n");
        EXPECT_EQ(bytes, expected) << encoding;
    }
}

// Whatever can be written must be read back, by the encoding's own declaration.
TEST(Encoding, FilesAreReadBack) {
    for (char const* encoding :
         {"UTF-8",       "UTF-16",     "UTF-16LE",  "UTF-16BE", "UTF-32BE",     "UCS-4",
          "UCS-2",       "ISO-8859-1", "ISO8859-1", "US-ASCII", "windows-1252", "windows-1251",
          "ISO-8859-15", "KOI8-R",     "Shift_JIS", "EUC-JP",   "ISO-2022-JP",  "GB2312",
          "GB18030",     "Big5",       "EUC-KR"}) {
        // Long enough for a parser to have changed to the declared encoding on the way.
        std::string body = "<e a=\"\xC3\xA4&#9;\xE2\x82\xAC\">";
        for (int i = 0; i < 5'000; ++i)
            body += " \xE3\x81\x82 \xD0\x96 and more";
        body += "</e>";
        auto const document = parse(declared(encoding) + body);
        auto const again = parseFile(file(document));
        EXPECT_TRUE(outline(*again->node()) == outline(*document->node())) << encoding;
        EXPECT_TRUE(file(again) == file(document)) << encoding;
    }
}

std::string errorOf(tree::DocumentRef const& document) {
    try {
        file(document);
    } catch (EncodingError const& error) {
        return error.what();
    }
    return "no error";
}

TEST(Encoding, NoReferenceNoFile) {
    struct Place {
        char const* body;
        char const* where;
    };

    Place const places[] = {
        {"<\xD0\x96/>", "a name"},
        {"<e \xD0\x96='1'/>", "a name"},
        {"<\xD0\x96:e xmlns:\xD0\x96='u'/>", "a name"},
        {"<e><!--\xD0\x96--></e>", "a comment"},
        {"<e><?t \xD0\x96?></e>", "a processing instruction"},
        {"<e><![CDATA[\xD0\x96]]></e>", "a CDATA section"},
    };
    for (auto const& [body, where] : places) {
        EXPECT_EQ(errorOf(parse(declared("ISO-8859-1") + body)),
                  "the encoding ISO-8859-1 has no character U+0416, and " + std::string{where} +
                      " cannot hold a reference to it");
    }
    EXPECT_EQ(errorOf(parse(declared("US-ASCII") + "<?\xC3\xA4?><e/>")),
              "the encoding US-ASCII has no character U+00E4, and a name cannot hold a reference "
              "to it");
}

TEST(Encoding, UnknownEncodings) {
    for (char const* name : {"no-such-encoding", "UTF-8//TRANSLIT", "ASCII//IGNORE", "a b"}) {
        Builder b;
        b.data(b.top(), NodeKind::declaration,
               "version=\"1.0\" encoding=\"" + std::string{name} + "\"");
        b.element(b.top(), "e");
        std::string const message = errorOf(b.document());
        EXPECT_EQ(message.rfind("a document cannot be saved in the unknown encoding ", 0), 0U)
            << message;
    }
}

TEST(Encoding, EncodingsThatCannotBeReadAgain) {
    for (char const* name : {"UTF-32", "utf-32le", "UCS-4LE"})
        EXPECT_EQ(errorOf(parse(declared(name) + "<e/>")).rfind("a document saved in", 0), 0U);
}

} // namespace

} // namespace tibxml::output::test
