#include "Reading.h"

namespace tibxml::reader::test {

struct PlaceRow {
    std::string xml;
    long line;
    long column;
    long offset;
    std::string sourceLine;
};

TEST(ErrorPlaces, CountLinesCharactersAndBytes) {
    std::string const longLine = "<a>" + std::string(100000, 'x');
    PlaceRow const rows[] = {
        {"", 1, 1, 0, ""},
        {"<a></b>", 1, 8, 7, "<a></b>"},
        {"<a>\n</b>", 2, 5, 8, "</b>"},
        {"<a>\r\n  </b>\r\n", 2, 7, 11, "  </b>"},
        {"<a>\n\u00E4\u20AC</b></a>", 2, 7, 13, "\u00E4\u20AC</b></a>"},
        {"<a>&x;</a>", 1, 7, 6, "<a>&x;</a>"},
        {"<a/>x", 1, 5, 4, "<a/>x"},
        {"<a b='<'/>", 1, 7, 6, "<a b='<'/>"},
        {"\xEF\xBB\xBF<a></b>", 1, 8, 10, "<a></b>"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a></b>", 1, 51, 50, "?><a></b>"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?>\n<a>\xE4</b>", 2, 9, 53, "<a>\u00E4</b>"},
        {longLine + "\u00E4</b>", 1, 100009, 100009, "xxx\u00E4</b>"},
    };
    for (PlaceRow const& row : rows) {
        ReadError const error = readBytes(Bytes{row.xml}).error;
        std::string const what = row.xml.substr(0, 60) + ": " + error.reason;
        EXPECT_EQ(error.line, row.line) << what;
        EXPECT_EQ(error.column, row.column) << what;
        EXPECT_EQ(error.offset, row.offset) << what;
        EXPECT_TRUE(error.sourceLine.ends_with(row.sourceLine)) << what << error.sourceLine;
    }
}

TEST(ErrorPlaces, StayRightFarInto) {
    std::string xml = "<a>\n";
    std::string const line = "<x>a line of text \u00E4</x>\n";
    for (int i = 0; i != 60000; ++i)
        xml += line;
    ReadError const error = readText(xml + "  <b></c>").error;
    EXPECT_EQ(error.line, 60002);
    EXPECT_EQ(error.column, 10);
    EXPECT_EQ(error.offset, static_cast<long>(xml.size()) + 9);
    EXPECT_EQ(error.sourceLine, "  <b></c>");
}

TEST(ErrorPlaces, ShowAPartOfALongLine) {
    std::string const line(20000, 'x');
    ReadError const error = readText("<a>\n" + line + "</b>" + line).error;
    EXPECT_EQ(error.line, 2);
    EXPECT_EQ(error.column, 20005);
    EXPECT_GT(error.sourceLine.size(), 1000U);
    EXPECT_LE(error.sourceLine.size(), 4200U);
}

TEST(ErrorPlaces, AreEmptyAfterSuccess) {
    Reading reading = readText("<a>");
    EXPECT_NE(reading.error.code, 0U);
    Bytes source{"<a/>"};
    EXPECT_TRUE(read(*reading.document, source, reading.error));
    EXPECT_EQ(reading.error.code, 0U);
    EXPECT_EQ(reading.error.reason, "");
    EXPECT_EQ(reading.error.sourceLine, "");
    EXPECT_EQ(reading.error.line, 0);
    EXPECT_EQ(reading.error.column, 0);
    EXPECT_EQ(reading.error.offset, 0);
}

TEST(ErrorCodes, TellTheSpecialCases) {
    struct Row {
        char const* xml;
        std::uint32_t code;
    };

    Row const rows[] = {
        {"<!DOCTYPE a><a/>", errorDocumentType},
        {"<!DOCTYPE a []><a/>", errorDocumentType},
        {"<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>", errorDocumentType},
        {"<!DOCTYPE a SYSTEM 'a.dtd'><a/>", errorDocumentType},
        {"<?xml version='1.0'?>\n<!--c--><!DOCTYPE a PUBLIC 'p' 's'>\n<a/>", errorDocumentType},
    };
    for (Row const& row : rows) {
        Reading const reading = readText(row.xml);
        expectFailure(reading, row.xml);
        EXPECT_EQ(reading.error.code, row.code) << row.xml;
    }
    EXPECT_EQ(errorDocumentType, 0xC00CE584U);
}

} // namespace tibxml::reader::test
