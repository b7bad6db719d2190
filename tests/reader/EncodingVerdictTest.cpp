// What becomes of a document whose mark, declaration and content name encodings: all combinations.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include <TibXml/platform/Utf.h>

#include "Decoding.h"
#include "Reading.h"

namespace tibxml::reader::test {

namespace {

using namespace std::string_view_literals;

struct Content {
    char const* encoding;
    char const* text;
};

// The columns of the table, with a character by which an encoding is recognised.
constexpr Content contents[] = {
    {"UTF-8", "\u00E4"},    {"UTF-16LE", "\u00E4"},  {"UTF-16BE", "\u00E4"},
    {"UTF-32LE", "\u00E4"}, {"UTF-32BE", "\u00E4"},  {"ISO-8859-1", "\u00E4"},
    {"CP1252", "\u20AC"},   {"Shift_JIS", "\u3042"}, {"IBM037", "\u00E4"},
    {"US-ASCII", "x"},
};

// What is to come of it:
//   =  the text as it was meant
//   m  another text: the declared encoding has these bytes too
//   n  refused: an unknown name
//   w  refused: the declaration is not written in the encoding that it names
//   x  refused for its bytes, which are not text or not XML
struct Row {
    std::string_view mark;
    char const* declared;
    std::string_view verdicts;
};

constexpr std::string_view none = "";
constexpr std::string_view mark8 = "\xEF\xBB\xBF";
constexpr std::string_view mark16le = "\xFF\xFE";
constexpr std::string_view mark16be = "\xFE\xFF";
constexpr std::string_view mark32le = "\xFF\xFE\0\0"sv;
constexpr std::string_view mark32be = "\0\0\xFE\xFF"sv;

constexpr Row rows[] = {
    {none, "", "=xx==xxxx="},
    {none, "UTF-8", "=wwwwxxxw="},
    {none, "UTF-16", "w==wwwwwww"},
    {none, "UTF-16LE", "w=wwwwwwww"},
    {none, "UTF-16BE", "ww=wwwwwww"},
    {none, "UTF-32", "www==wwwww"},
    {none, "UTF-32LE", "www=wwwwww"},
    {none, "UTF-32BE", "wwww=wwwww"},
    {none, "ISO-10646-UCS-2", "w==wwwwwww"},
    {none, "ISO-10646-UCS-4", "www==wwwww"},
    {none, "ISO-8859-1", "mwwww=mmw="},
    {none, "ISO8859-1", "mwwww=mmw="},
    {none, "US-ASCII", "xwwwwxxxw="},
    {none, "windows-1252", "mwwww==mw="},
    {none, "Shift_JIS", "mwwwwxx=w="},
    {none, "UTF-7", "xwwwwxxxw="},
    {none, "IBM037", "wwwwwwww=w"},
    {none, "nonsense", "nnnnnnnnnn"},
    {mark8, "", "=xxxxxxxx="},
    {mark8, "UTF-8", "=xxxxxxxx="},
    {mark8, "UTF-16", "wxxxxwwwxw"},
    {mark8, "UTF-16LE", "wxxxxwwwxw"},
    {mark8, "UTF-16BE", "wxxxxwwwxw"},
    {mark8, "UTF-32", "wxxxxwwwxw"},
    {mark8, "UTF-32LE", "wxxxxwwwxw"},
    {mark8, "UTF-32BE", "wxxxxwwwxw"},
    {mark8, "ISO-10646-UCS-2", "wxxxxwwwxw"},
    {mark8, "ISO-10646-UCS-4", "wxxxxwwwxw"},
    {mark8, "ISO-8859-1", "=xxxxxxxx="},
    {mark8, "ISO8859-1", "=xxxxxxxx="},
    {mark8, "US-ASCII", "=xxxxxxxx="},
    {mark8, "windows-1252", "=xxxxxxxx="},
    {mark8, "Shift_JIS", "=xxxxxxxx="},
    {mark8, "UTF-7", "=xxxxxxxx="},
    {mark8, "IBM037", "wxxxxwwwxw"},
    {mark8, "nonsense", "nxxxxnnnxn"},
    {mark16le, "", "x=xxxxxxxx"},
    {mark16le, "UTF-8", "x=xxxxxxxx"},
    {mark16le, "UTF-16", "x=xxxxxxxx"},
    {mark16le, "UTF-16LE", "x=xxxxxxxx"},
    {mark16le, "UTF-16BE", "xwxxxxxxxx"},
    {mark16le, "UTF-32", "xwxxxxxxxx"},
    {mark16le, "UTF-32LE", "xwxxxxxxxx"},
    {mark16le, "UTF-32BE", "xwxxxxxxxx"},
    {mark16le, "ISO-10646-UCS-2", "x=xxxxxxxx"},
    {mark16le, "ISO-10646-UCS-4", "xwxxxxxxxx"},
    {mark16le, "ISO-8859-1", "xwxxxxxxxx"},
    {mark16le, "ISO8859-1", "xwxxxxxxxx"},
    {mark16le, "US-ASCII", "xwxxxxxxxx"},
    {mark16le, "windows-1252", "xwxxxxxxxx"},
    {mark16le, "Shift_JIS", "xwxxxxxxxx"},
    {mark16le, "UTF-7", "xwxxxxxxxx"},
    {mark16le, "IBM037", "xwxxxxxxxx"},
    {mark16le, "nonsense", "xnxxxxxxxx"},
    {mark16be, "", "xx=xxxxxxx"},
    {mark16be, "UTF-8", "xx=xxxxxxx"},
    {mark16be, "UTF-16", "xx=xxxxxxx"},
    {mark16be, "UTF-16LE", "xxwxxxxxxx"},
    {mark16be, "UTF-16BE", "xx=xxxxxxx"},
    {mark16be, "UTF-32", "xxwxxxxxxx"},
    {mark16be, "UTF-32LE", "xxwxxxxxxx"},
    {mark16be, "UTF-32BE", "xxwxxxxxxx"},
    {mark16be, "ISO-10646-UCS-2", "xx=xxxxxxx"},
    {mark16be, "ISO-10646-UCS-4", "xxwxxxxxxx"},
    {mark16be, "ISO-8859-1", "xxwxxxxxxx"},
    {mark16be, "ISO8859-1", "xxwxxxxxxx"},
    {mark16be, "US-ASCII", "xxwxxxxxxx"},
    {mark16be, "windows-1252", "xxwxxxxxxx"},
    {mark16be, "Shift_JIS", "xxwxxxxxxx"},
    {mark16be, "UTF-7", "xxwxxxxxxx"},
    {mark16be, "IBM037", "xxwxxxxxxx"},
    {mark16be, "nonsense", "xxnxxxxxxx"},
    {mark32le, "", "xxx=xxxxxx"},
    {mark32le, "UTF-8", "xxx=xxxxxx"},
    {mark32le, "UTF-16", "xxxwxxxxxx"},
    {mark32le, "UTF-16LE", "xxxwxxxxxx"},
    {mark32le, "UTF-16BE", "xxxwxxxxxx"},
    {mark32le, "UTF-32", "xxx=xxxxxx"},
    {mark32le, "UTF-32LE", "xxx=xxxxxx"},
    {mark32le, "UTF-32BE", "xxxwxxxxxx"},
    {mark32le, "ISO-10646-UCS-2", "xxxwxxxxxx"},
    {mark32le, "ISO-10646-UCS-4", "xxx=xxxxxx"},
    {mark32le, "ISO-8859-1", "xxxwxxxxxx"},
    {mark32le, "ISO8859-1", "xxxwxxxxxx"},
    {mark32le, "US-ASCII", "xxxwxxxxxx"},
    {mark32le, "windows-1252", "xxxwxxxxxx"},
    {mark32le, "Shift_JIS", "xxxwxxxxxx"},
    {mark32le, "UTF-7", "xxxwxxxxxx"},
    {mark32le, "IBM037", "xxxwxxxxxx"},
    {mark32le, "nonsense", "xxxnxxxxxx"},
    {mark32be, "", "xxxx=xxxxx"},
    {mark32be, "UTF-8", "xxxx=xxxxx"},
    {mark32be, "UTF-16", "xxxxwxxxxx"},
    {mark32be, "UTF-16LE", "xxxxwxxxxx"},
    {mark32be, "UTF-16BE", "xxxxwxxxxx"},
    {mark32be, "UTF-32", "xxxx=xxxxx"},
    {mark32be, "UTF-32LE", "xxxxwxxxxx"},
    {mark32be, "UTF-32BE", "xxxx=xxxxx"},
    {mark32be, "ISO-10646-UCS-2", "xxxxwxxxxx"},
    {mark32be, "ISO-10646-UCS-4", "xxxx=xxxxx"},
    {mark32be, "ISO-8859-1", "xxxxwxxxxx"},
    {mark32be, "ISO8859-1", "xxxxwxxxxx"},
    {mark32be, "US-ASCII", "xxxxwxxxxx"},
    {mark32be, "windows-1252", "xxxxwxxxxx"},
    {mark32be, "Shift_JIS", "xxxxwxxxxx"},
    {mark32be, "UTF-7", "xxxxwxxxxx"},
    {mark32be, "IBM037", "xxxxwxxxxx"},
    {mark32be, "nonsense", "xxxxnxxxxx"},
};

std::string declaration(std::string_view encoding) {
    if (encoding.empty()) return {};
    return "<?xml version='1.0' encoding='" + std::string{encoding} + "'?>";
}

std::string withoutMark(std::string text) {
    return text.starts_with(mark8) ? text.substr(mark8.size()) : text;
}

bool isMarkup(std::string_view text) {
    return text.starts_with('<') && text.find('\0') == std::string_view::npos &&
           platform::isValidUtf8(text);
}

char verdictOn(Decoded const& decoded, std::string const& meant) {
    if (decoded.failure.find("is not known") != std::string::npos) return 'n';
    if (decoded.failure.find("but is written in") != std::string::npos) return 'w';
    std::string const text = withoutMark(decoded.text);
    if (!decoded.failure.empty() || !isMarkup(text)) return 'x';
    return text == meant ? '=' : 'm';
}

} // namespace

TEST(EncodingVerdicts, AreThoseOfTheTable) {
    for (Row const& row : rows) {
        std::string verdicts;
        for (Content const& content : contents) {
            std::string const meant = declaration(row.declared) + "<a>" + content.text + "</a>";
            std::string const bytes = std::string{row.mark} + encoded(meant, content.encoding);
            char const verdict = verdictOn(decode(bytes), meant);
            EXPECT_EQ(verdictOn(decode(bytes, 1, 1), meant), verdict);
            verdicts += verdict;
        }
        EXPECT_EQ(verdicts, row.verdicts)
            << row.declared << " with a mark of " << row.mark.size() << " bytes";
    }
}

// A refused document is given up to the end of its declaration.
TEST(EncodingVerdicts, ComeAfterTheDeclaration) {
    for (char const* const name : {"nonsense", "UTF-16", "IBM037"}) {
        for (char const* const encoding : {"UTF-8", "UTF-32BE"}) {
            std::string const start = declaration(name);
            Decoded const decoded = decode(encoded(start + "<a/>", encoding));
            EXPECT_EQ(decoded.text, start) << name << " in " << encoding;
            EXPECT_NE(decoded.failure.find(name), std::string::npos) << decoded.failure;
        }
    }
}

// Which the parser refuses or takes as no declaration: then the encoding is the one that shows.
TEST(EncodingVerdicts, DoNotComeFromWhatIsNoDeclaration) {
    constexpr char const* starts[] = {
        "<?xml-stylesheet encoding='ISO-8859-1'?>",
        "<?xmlencoding='ISO-8859-1'?>",
        "<?xml version='1.0' x='encoding=\"ISO-8859-1\"'?>",
        "<?xml version='1.0' encoding='8859_1'?>",
        "<?xml version='1.0' encoding=''?>",
        "<?xml version='1.0' encoding ISO-8859-1?>",
        "<?xml version='1.0' encoding=ISO-8859-1?>",
        "<?xml version='1.0' encoding='ISO-8859-1//TRANSLIT'?>",
        "<?xml version='1.0' encoding='ISO-8859-1>",
        " <?xml version='1.0' encoding='ISO-8859-1'?>",
        "<!--?xml version='1.0' encoding='ISO-8859-1'?-->",
        "<?xml",
        "<?xml ",
        "<",
        "",
    };
    for (std::string const start : starts) {
        std::string const text = start + "\u00E4";
        EXPECT_EQ(decode(text).text, text);
        EXPECT_EQ(decode(text).failure, "") << text;
        EXPECT_EQ(decode(text, 1, 1).text, text);
    }
}

TEST(EncodingVerdicts, NeedTheDeclarationWithinALimit) {
    std::string const start = "<?xml version='1.0'" + std::string(60000, ' ');
    std::string const end = "encoding='ISO-8859-1'?><a>\xE4</a>";
    EXPECT_EQ(decode(start + end).text.substr(start.size() + 23), "<a>\u00E4</a>");
    Decoded const late = decode(start + std::string(6000, ' ') + end);
    EXPECT_EQ(late.failure, "the XML declaration does not end within 64 KiB");
    EXPECT_EQ(late.text.size(), 65536U);
}

} // namespace tibxml::reader::test
