#include "Reading.h"

#include <random>

#include <output/Serializer.h>

namespace tibxml::reader::test {

TEST(BrokenInput, FailsCleanly) {
    using namespace std::string_view_literals;
    std::string_view const rows[] = {
        ""sv,
        " "sv,
        "\n\t\r\n"sv,
        "\xEF\xBB\xBF"sv,
        "\xFF\xFE"sv,
        "\xFE\xFF\0<"sv,
        "x"sv,
        "<"sv,
        "<!"sv,
        "<?"sv,
        "<a"sv,
        "<a>"sv,
        "<a/"sv,
        "<a></b>"sv,
        "</a>"sv,
        "<a/><b/>"sv,
        "<a/>x"sv,
        "x<a/>"sv,
        "<a>&</a>"sv,
        "<a>&;</a>"sv,
        "<a>&x</a>"sv,
        "<a>&nbsp;</a>"sv,
        "<a b='&nbsp;'/>"sv,
        "<a>&#;</a>"sv,
        "<a>&#0;</a>"sv,
        "<a>&#x1F;</a>"sv,
        "<a>&#xD800;</a>"sv,
        "<a>&#xFFFE;</a>"sv,
        "<a>&#x110000;</a>"sv,
        "<a>&#99999999999999999999;</a>"sv,
        "<a>\x01</a>"sv,
        "<a>\0</a>"sv,
        "<a>\xEF\xBF\xBE</a>"sv,
        "<a b/>"sv,
        "<a b=/>"sv,
        "<a b=c/>"sv,
        "<a b='c/>"sv,
        "<a b='<'/>"sv,
        "<a b='1'c='2'/>"sv,
        "<a>]]></a>"sv,
        "<a><![CDATA[x</a>"sv,
        "<a><![cdata[x]]></a>"sv,
        "<a><!-- x -- y --></a>"sv,
        "<a><!-- x</a>"sv,
        "<a><!--x---></a>"sv,
        "<a><?xml version='1.0'?></a>"sv,
        "<a><?XML x?></a>"sv,
        "<a><?p x</a>"sv,
        " <?xml version='1.0'?><a/>"sv,
        "<?xml?><a/>"sv,
        "<?xml encoding='utf-8'?><a/>"sv,
        "<?xml version='2.0'?><a/>"sv,
        "<?xml version='1.0' standalone='maybe'?><a/>"sv,
        "<?xml version='1.0'><a/>"sv,
        "<?xml version='1.0'?>"sv,
        "<!--c-->"sv,
        "<1a/>"sv,
        "< a/>"sv,
        "<a / >"sv,
        "<a></a"sv,
        "<a></a b='1'>"sv,
        "<!ELEMENT a ANY><a/>"sv,
    };
    for (std::string_view const xml : rows) {
        expectFailure(readBytes(Bytes{xml}), xml);
        if (!xml.starts_with('\xFF') && !xml.starts_with('\xFE')) expectFailure(readText(xml), xml);
    }
}

std::string const sample =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?><!-- \u00E4 -->"
    "<a xmlns=\"urn:d\" b=\"1&amp;&#10;\" xmlns:p=\"urn:p\" p:c=\"\u20AC\">\r\n"
    "  <p:e>text &lt; &#32; more\r\n</p:e> <![CDATA[ <x> ]]>\r\n"
    "  <?target some data?>&#32;<f/>\U0001F600   <g> </g>\r\n</a>";

TEST(BrokenInput, IsEveryBeginningOfADocument) {
    EXPECT_TRUE(readText(sample).done);
    for (std::size_t length = 0; length != sample.size(); ++length) {
        expectFailure(readText(std::string_view{sample}.substr(0, length)), "cut");
        expectFailure(readBytes(Bytes{std::string_view{sample}.substr(0, length), 5}), "cut");
    }
}

// Text that does not convert lies ahead of what the parser has come to, and is found while it moves
// its buffer to make room.
TEST(BrokenInput, IsTextThatDoesNotConvertFarInto) {
    for (std::size_t const size : {0U, 100U, 3999U, 5000U, 12000U, 50000U, 300000U}) {
        for (std::string_view const encoding : {"Shift_JIS", "EUC-JP", "US-ASCII"}) {
            std::string const xml = "<?xml version='1.0' encoding='" + std::string{encoding} +
                                    "'?><r>" + std::string(size, 'x') + "\x80\xFF</r>";
            Reading const reading = readBytes(Bytes{xml});
            expectFailure(reading, encoding);
            EXPECT_EQ(reading.error.line, 1) << encoding << size;
            EXPECT_NE(reading.error.sourceLine, "") << encoding << size;
        }
    }
}

// What was read is written and read again with the same result, or was refused.
void readAnything(std::string const& bytes) {
    Reading const reading = readBytes(Bytes{bytes});
    if (!reading.done) return expectFailure(reading, bytes);
    std::string xml;
    output::appendXml(*reading.document, reading.top(), xml);
    Reading const again = readText(xml);
    std::string xmlAgain;
    output::appendXml(*again.document, again.top(), xmlAgain);
    EXPECT_TRUE(again.done) << bytes << "\n" << xml;
    EXPECT_EQ(xmlAgain, xml) << bytes;
}

TEST(BrokenInput, OfAnyKindDoesNoHarm) {
    std::mt19937 random{2};
    for (int round = 0; round != 6000; ++round) {
        std::string bytes = sample;
        for (auto flips = 1 + random() % 3; flips != 0; --flips) {
            char& byte = bytes[random() % bytes.size()];
            byte = static_cast<char>(byte ^ (1 << random() % 8));
        }
        readAnything(bytes);
    }
}

TEST(BrokenInput, OfShuffledPiecesDoesNoHarm) {
    std::string_view const pieces[] = {"<a",    ">",         "/>",  "</a>",       " b='1'",
                                       "&amp;", "&#32;",     " ",   "\r\n",       "<!--",
                                       "-->",   "<![CDATA[", "]]>", "<?p ",       "?>",
                                       "x",     "\u00E4",    "&",   " xmlns='u'", " xmlns:p='v'",
                                       "<p:",   ";",         "'",   "<a>",        "</p:a>"};
    std::mt19937 random{4};
    for (int round = 0; round != 6000; ++round) {
        std::string bytes = "<a>";
        for (auto count = random() % 12; count != 0; --count)
            bytes += pieces[random() % std::size(pieces)];
        readAnything(bytes + "</a>");
    }
}

} // namespace tibxml::reader::test
