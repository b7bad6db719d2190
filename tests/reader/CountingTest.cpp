#include <gtest/gtest.h>

#include <reader/Counting.h>

#include "Decoding.h"
#include "Reading.h"

namespace tibxml::reader::test {

namespace {

struct Row {
    char const* document;
    std::uint64_t elements;
    std::uint64_t attributes;
    std::uint64_t textBytes;
    std::uint32_t depth;
};

constexpr Row rows[] = {
    {"<a/>", 1, 0, 0, 1},
    {"<a b='1' c='2'><d e='3'/></a>", 2, 3, 0, 2},
    {"<a xmlns='u' xmlns:p='v' p:b='1'/>", 1, 1, 0, 1},
    {"<a><b><c/></b><d/><e><f/></e></a>", 6, 0, 0, 3},
    {"\n<a>\r\n <b/>\n</a>\n\n", 2, 0, 3, 2},
    {"<a>a\u00E4\u20AC\U0001F600</a>", 1, 0, 10, 1},
    {"<a><![CDATA[<b>]]>&amp;&#65;&#8364;\r</a>", 1, 0, 9, 1},
    {"<?xml version='1.0'?><!--c--><a><!--c--><?d e?></a><?f?>", 1, 0, 0, 1},
};

} // namespace

TEST(Counting, CountsWhatIsTold) {
    for (Row const& row : rows) {
        for (std::size_t const step : {std::size_t{1}, std::size_t{3}, Bytes::never}) {
            Counts counts{9, 9, 9, 9};
            ReadError error;
            Bytes source{row.document, step};
            EXPECT_TRUE(count(counts, source, error)) << row.document << error.reason;
            EXPECT_EQ(counts.elements, row.elements) << row.document;
            EXPECT_EQ(counts.attributes, row.attributes) << row.document;
            EXPECT_EQ(counts.textBytes, row.textBytes) << row.document;
            EXPECT_EQ(counts.depth, row.depth) << row.document;
        }
    }
}

TEST(Counting, CountsTextOfAnyEncodingAsUtf8) {
    for (char const* const encoding : {"UTF-16LE", "UTF-32BE", "KOI8-R"}) {
        std::string const name{encoding};
        std::string const text = "<?xml version='1.0' encoding='" + name + "'?><a>\u041F</a>";
        std::string const bytes = encoded(text, encoding);
        Bytes source{bytes};
        Counts counts;
        ReadError error;
        EXPECT_TRUE(count(counts, source, error)) << encoding;
        EXPECT_EQ(counts.textBytes, 2U) << encoding;
    }
}

TEST(Counting, RefusesWhatIsRefusedElsewhere) {
    for (char const* const document :
         {"", "<a>", "<a></b>", "<a b='1' b='2'/>", "<p:a/>", "<a>\xFF</a>", "<!DOCTYPE a><a/>"}) {
        Bytes source{document};
        Counts counts;
        ReadError error;
        EXPECT_FALSE(count(counts, source, error)) << document;
        Reading const reading = readBytes(Bytes{document});
        EXPECT_EQ(error.code, reading.error.code) << document;
        EXPECT_EQ(error.reason, reading.error.reason) << document;
        EXPECT_EQ(error.offset, reading.error.offset) << document;
    }
}

TEST(Counting, TellsWhatWasThereBeforeTheSourceFailed) {
    std::string document = "<a>";
    for (int i = 0; i != 100000; ++i)
        document += "<b c='d'/>";
    Bytes source{document, 4096, 900000};
    Counts counts;
    ReadError error;
    EXPECT_FALSE(count(counts, source, error));
    EXPECT_EQ(error.code, errorSource);
    EXPECT_EQ(counts.elements, counts.attributes + 1);
    EXPECT_GE(counts.elements, 89990U);
}

} // namespace tibxml::reader::test
