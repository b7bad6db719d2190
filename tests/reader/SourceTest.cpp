#include "Reading.h"

#include <random>

namespace tibxml::reader::test {

std::string const sample =
    "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n<!-- \u00E4 -->\r\n"
    "<a xmlns=\"urn:d\" b=\"1&amp;&#10;\" xmlns:p=\"urn:p\" p:c=\"\u20AC\">\r\n"
    "  <p:e>text &lt; &#32; more\r\n</p:e> <![CDATA[ <x> ]]>\r\n"
    "  <?target some data?>&#32;<f/>\U0001F600;   <g> </g>\r\n</a>\r\n<!--end-->";

TEST(Sources, MayGiveFewBytesAtATime) {
    std::string const expected = shape(readBytes(Bytes{sample}));
    EXPECT_NE(expected, "");
    for (std::size_t const step : {1U, 2U, 3U, 7U, 64U})
        EXPECT_EQ(shape(readBytes(Bytes{sample, step})), expected) << step;
    EXPECT_EQ(shape(readText(sample)), expected);
}

TEST(Sources, MayGiveFewBytesOfALargeDocument) {
    std::string xml = "<a>";
    std::mt19937 random{1};
    for (int i = 0; i != 3000; ++i) {
        xml += "<b c='" + std::string(random() % 40, 'v') + "'>\u00E4\r\n";
        xml += std::string(random() % 60, ' ') + "&#32;</b>" + std::string(random() % 5, '\n');
    }
    xml += "</a>";
    std::string const expected = shape(readText(xml));
    for (std::size_t const step : {1U, 7U, 997U})
        EXPECT_EQ(shape(readBytes(Bytes{xml, step})), expected) << step;
}

TEST(Sources, ThatFailMakeReadingFail) {
    for (std::size_t after = 0; after < sample.size(); ++after) {
        Reading const reading = readBytes(Bytes{sample, 7, after});
        expectFailure(reading, "failing source");
        EXPECT_EQ(reading.error.code, errorSource) << after;
    }
}

TEST(Sources, ThatFailBehindTheRootMakeReadingFailToo) {
    std::string const xml = "<a/>" + std::string(100000, ' ');
    EXPECT_EQ(readBytes(Bytes{xml, 100, 90000}).error.code, errorSource);
}

} // namespace tibxml::reader::test
