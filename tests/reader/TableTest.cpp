// The tables of documents, and what the reader says about each.
#include "Reading.h"
#include "Tables.h"

#include <set>
#include <stdexcept>

namespace tibxml::reader::test {

class Tables : public testing::TestWithParam<std::string> {};

TEST_P(Tables, SayWhatIsWellFormed) {
    for (TableRow const& row : readTable(GetParam())) {
        std::string const what = row.origin + ": " + row.document;
        Reading const reading = readBytes(Bytes{row.document});
        EXPECT_EQ(reading.done, row.isAccepted) << what << ": " << reading.error.reason;
        if (!row.isAccepted) expectFailure(reading, what);
        if (!row.isUtf8) continue;
        EXPECT_EQ(readText(row.document).done, row.isAccepted) << what;
    }
}

TEST_P(Tables, SayItForReadingWithoutATreeToo) {
    for (TableRow const& row : readTable(GetParam())) {
        std::string const what = row.origin + ": " + row.document;
        EXPECT_EQ(traceSax(Bytes{row.document}).isAccepted, row.isAccepted) << what;
        if (!row.isUtf8) continue;
        EXPECT_EQ(traceSaxOfText(row.document).isAccepted, row.isAccepted) << what;
    }
}

TEST_P(Tables, SayWhereAnErrorIs) {
    for (TableRow const& row : readTable(GetParam())) {
        if (row.isAccepted) continue;
        ReadError const error = readBytes(Bytes{row.document}).error;
        EXPECT_EQ((Place{error.line, error.column}), row.place)
            << row.origin << ": " << row.document << ": " << error.reason;
    }
}

INSTANTIATE_TEST_SUITE_P(Chapters, Tables, testing::ValuesIn(allTableNames()),
                         [](auto const& chapter) { return chapter.param; });

TEST(TablesTogether, HoldEnoughOfBothKinds) {
    std::set<std::string> accepted;
    std::set<std::string> refused;
    for (std::string const& name : tableNames())
        for (TableRow const& row : readTable(name))
            (row.isAccepted ? accepted : refused).insert(row.document);
    EXPECT_GT(accepted.size(), 700U);
    EXPECT_GT(refused.size(), 1500U);
    for (std::string const& document : accepted)
        EXPECT_EQ(refused.count(document), 0U) << document;
}

TEST(TableFormat, PutsRowsIntoTheirContexts) {
    std::vector<TableRow> const rows =
        parseTable("t", "# remark\n\n[1] one\nin <a>\u2026</a>\nin <b \u2026/>\n+ x\n- \\n\u00A6y\n"
                        "in <c>\u2026</c>\n+chars 41-43 45\n[2] two\n- \\u{E4}\\xE4\\\\\u00A6\n");
    std::string documents;
    for (TableRow const& row : rows)
        documents += (row.isAccepted ? "+" : "-") + row.document + "|";
    EXPECT_EQ(documents, "+<a>x</a>|+<b x/>|-<a>\ny</a>|-<b \ny/>|+<c>A</c>|+<c>C</c>|+<c>E</c>|"
                         "-\u00E4\xE4\\|");
    EXPECT_EQ(rows[2].place, (Place{2, 1}));
    EXPECT_EQ(rows[7].place, (Place{1, 4}));
    EXPECT_EQ(rows[2].origin, "t:7 [1] one");
}

TEST(TableFormat, EncodesInBothByteOrders) {
    using namespace std::string_literals;
    std::vector<TableRow> const rows =
        parseTable("t", "[1] one\nas UTF-16 marked\n+ \\u{1F600}\n[2] two\nas UTF-32\n+ a\n");
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[0].document, "\xFE\xFF\xD8\x3D\xDE\x00"s);
    EXPECT_EQ(rows[1].document, "\xFF\xFE\x3D\xD8\x00\xDE"s);
    EXPECT_EQ(rows[2].document, "\0\0\0a"s);
    EXPECT_EQ(rows[3].document, "a\0\0\0"s);
}

TEST(TableFormat, RefusesLinesThatMeanNothing) {
    for (char const* const text : {"x", "+", "- <a>", "-chars 110x", "+ \\q", "in"})
        EXPECT_THROW(parseTable("t", text), std::runtime_error) << text;
}

TEST(Places, CountLinesAndCharacters) {
    EXPECT_EQ(placeAfter(""), (Place{1, 1}));
    EXPECT_EQ(placeAfter("\xEF\xBB\xBFx\u00E4\U0001F600"), (Place{1, 4}));
    EXPECT_EQ(placeAfter("\n\r\n\r\rx"), (Place{5, 2}));
}

} // namespace tibxml::reader::test
