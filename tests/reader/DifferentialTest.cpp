// The reader against libxml2 on documents made up at random: same verdict, same tree, same events.
#include "Peer.h"
#include "RandomDocument.h"
#include "ReaderComparison.h"
#include "Tables.h"
#include "Trace.h"

#include <algorithm>
#include <cstdlib>
#include <set>
#include <string>

#include <gtest/gtest.h>

namespace tibxml::reader::test {

constexpr std::uint32_t shards = 4;

std::uint32_t documentsPerShard() {
    char const* const wanted = std::getenv("TIBXML_READER_DOCUMENTS");
    auto const all = wanted != nullptr ? static_cast<std::uint32_t>(std::stoul(wanted)) : 100'000U;
    return all / shards;
}

class Differential : public testing::TestWithParam<std::uint32_t> {};

// TIBXML_READER_DOCUMENTS in the environment asks for more documents.
TEST_P(Differential, AgreesWithThePeerOnRandomDocuments) {
    std::uint32_t const count = documentsPerShard();
    std::uint32_t accepted = 0;
    for (std::uint32_t i = 0; i != count && !HasFailure(); ++i) {
        std::uint32_t const seed = 1 + GetParam() * count + i;
        RandomDocument random{seed};
        std::string document = random.wellFormed();
        if (!random.once(3)) document = random.broken(document);
        bool const isEncoded = random.once(8);
        if (isEncoded) document = random.inSomeEncoding(document);
        Entry const entry = isEncoded || random.once(4) ? Entry::bytes : Entry::text;
        EXPECT_EQ(difference(document, entry), "") << "seed " << seed << ": " << document;
        accepted += askPeer(document, entry == Entry::text).isAccepted ? 1U : 0U;
    }
    // Or the documents are too broken, or too well made, to say much.
    EXPECT_GT(accepted, count / 3);
    EXPECT_LT(accepted, count * 2 / 3);
}

INSTANTIATE_TEST_SUITE_P(Shards, Differential, testing::Range(0U, shards));

class DifferentialTables : public testing::TestWithParam<std::string> {};

TEST_P(DifferentialTables, AgreeWithThePeer) {
    for (TableRow const& row : readTable(GetParam())) {
        std::string const what = row.origin + ": " + row.document;
        EXPECT_EQ(difference(row.document, Entry::bytes), "") << what;
        if (!row.isUtf8) continue;
        EXPECT_EQ(difference(row.document, Entry::text), "") << what;
    }
}

INSTANTIATE_TEST_SUITE_P(Chapters, DifferentialTables, testing::ValuesIn(tableNames()),
                         [](auto const& chapter) { return chapter.param; });

// Also to be found in a text, which the table has none of.
std::string const utf16{"\xFF\xFE<\0a\0/\0>\0", 10};

TEST(KnownDifferences, AreAllShownByADocument) {
    std::vector<TableRow> const rows = readTable("strictness");
    for (KnownDifference const& known : knownDifferences()) {
        bool const isInTable = std::any_of(rows.begin(), rows.end(), [&](TableRow const& row) {
            return known.isAbout(row.document, Entry::bytes);
        });
        EXPECT_TRUE(isInTable || known.isAbout(utf16, Entry::text)) << known.rule;
    }
}

TEST(KnownDifferences, AreWhereThePeerGivesAnotherVerdict) {
    for (TableRow const& row : readTable("strictness"))
        EXPECT_NE(askPeer(row.document, false).isAccepted, row.isAccepted) << row.origin;
    EXPECT_TRUE(askPeer(utf16, true).isAccepted);
    EXPECT_FALSE(traceTreeOfText(utf16, WhiteSpace::preserved).isAccepted);
    EXPECT_EQ(difference(utf16, Entry::text), "");
}

// What the comparison rests on: documents that differ in one thing have different traces.
TEST(Traces, TellWhatDiffers) {
    char const* const documents[] = {"<a/>",
                                     "<b/>",
                                     "<a xmlns='u'/>",
                                     "<a b='1'/>",
                                     "<a b='2'/>",
                                     "<a>x</a>",
                                     "<a><![CDATA[x]]></a>",
                                     "<a><!--x--></a>",
                                     "<a><?x?></a>",
                                     "<a><?x y?></a>",
                                     "<?xml version='1.0'?><a/>",
                                     "<a><b/></a>",
                                     "<a xmlns:p='u'/>",
                                     "<p:a xmlns:p='u'/>",
                                     "<a b='1' c='2'/>",
                                     "<a c='2' b='1'/>",
                                     "<a>\\n</a>",
                                     "<!--x--><a/>",
                                     "<a/><!--x-->",
                                     "<a>x\n</a>"};
    std::set<std::string> ours;
    std::set<std::string> theirs;
    for (char const* const document : documents) {
        ours.insert(traceTreeOfText(document, WhiteSpace::preserved).lines);
        theirs.insert(askPeer(document, true).preserved);
    }
    EXPECT_EQ(ours.size(), std::size(documents));
    EXPECT_EQ(theirs, ours);
}

} // namespace tibxml::reader::test
