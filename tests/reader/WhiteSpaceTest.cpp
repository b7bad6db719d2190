#include "Reading.h"

namespace tibxml::reader::test {

struct WhiteSpaceRow {
    char const* xml;
    char const* dropped;
    char const* preserved;
};

// In this notation \n stands for itself.
WhiteSpaceRow const whiteSpaceRows[] = {
    {"<a> </a>", "<a>~</>", "<a>\" \"</>"},
    {"<a>\n\t<b/>\r\n<c/></a>", "<a>~<b></>|<c></></>", "<a>\"\n\t\"<b></>\"\n\"<c></></>"},
    {"<a><b/><c/> </a>", "<a><b></><c></>|</>", "<a><b></><c></>\" \"</>"},
    {"<a> x </a>", "<a>\" x \"</>", "<a>\" x \"</>"},
    {"<a> x<b/> </a>", "<a>\" x\"<b></>|</>", "<a>\" x\"<b></>\" \"</>"},
    {"<a>&#32;</a>", "<a>\" \"</>", "<a>\" \"</>"},
    {"<a> &#9; </a>", "<a>\" \t \"</>", "<a>\" \t \"</>"},
    {"<a>&#13;&#10;</a>", "<a>\"\r\n\"</>", "<a>\"\r\n\"</>"},
    {"<a>\r\n&#x20;<b/></a>", "<a>\"\n \"<b></></>", "<a>\"\n \"<b></></>"},
    {"<a> &amp; </a>", "<a>\" & \"</>", "<a>\" & \"</>"},
    {"<a><![CDATA[ ]]></a>", "<a>[ ]</>", "<a>[ ]</>"},
    {"<a><![CDATA[]]></a>", "<a>[]</>", "<a>[]</>"},
    {"<a> <![CDATA[x]]> </a>", "<a>~[x]|</>", "<a>\" \"[x]\" \"</>"},
    {"<a> <!--c--> <?p?> </a>", "<a>~<!c>|<?p >|</>", "<a>\" \"<!c>\" \"<?p >\" \"</>"},
    {"<a xml:space='preserve'> <b> </b></a>", "<a xml:space='preserve'>\" \"<b>\" \"</></>",
     "<a xml:space='preserve'>\" \"<b>\" \"</></>"},
    {"<a xml:space='preserve'><b xml:space='default'> <c> </c></b> </a>",
     "<a xml:space='preserve'><b xml:space='default'>~<c>~</></>\" \"</>",
     "<a xml:space='preserve'><b xml:space='default'>\" \"<c>\" \"</></>\" \"</>"},
    {"<a><b xml:space='preserve'> </b> </a>", "<a><b xml:space='preserve'>\" \"</>|</>",
     "<a><b xml:space='preserve'>\" \"</>\" \"</>"},
    {"<a xml:space='other'> </a>", "<a xml:space='other'>~</>", "<a xml:space='other'>\" \"</>"},
    {"<a space='preserve'> </a>", "<a space='preserve'>~</>", "<a space='preserve'>\" \"</>"},
    {"\n<!--c-->\n<a/>\n", "<!c><a></>", "<!c><a></>"},
    {"<a>\u00A0</a>", "<a>\"\u00A0\"</>", "<a>\"\u00A0\"</>"},
};

TEST(WhiteSpace, IsDroppedWhereItOnlyLaysOut) {
    for (WhiteSpaceRow const& row : whiteSpaceRows) {
        Reading const reading = readText(row.xml);
        EXPECT_TRUE(reading.done) << reading.error.reason;
        EXPECT_EQ(shape(reading), row.dropped) << row.xml;
    }
}

TEST(WhiteSpace, IsKeptWhenTheDocumentPreservesIt) {
    for (WhiteSpaceRow const& row : whiteSpaceRows) {
        Reading const reading = readText(row.xml, true);
        EXPECT_TRUE(reading.done) << reading.error.reason;
        EXPECT_EQ(shape(reading), row.preserved) << row.xml;
    }
}

TEST(WhiteSpace, MayBeLongerThanAnyBuffer) {
    std::string const blanks(300000, ' ');
    EXPECT_EQ(shape(readText("<a>" + blanks + "</a>")), "<a>~</>");
    EXPECT_EQ(shape(readText("<a>" + blanks + "x</a>")), "<a>\"" + blanks + "x\"</>");
    EXPECT_EQ(shape(readText("<a>;" + blanks + "</a>")), "<a>\";" + blanks + "\"</>");
    EXPECT_EQ(shape(readText("<a>\u00E4;<b/>" + blanks + "</a>")), "<a>\"\u00E4;\"<b></>|</>");
}

TEST(WhiteSpace, InAttributeValuesIsNormalised) {
    EXPECT_EQ(shape(readText("<a b='x\r\ny\tz\n'/>")), "<a b='x y z '></>");
    EXPECT_EQ(shape(readText("<a b='&#13;&#10;&#9;&#32;'/>")), "<a b='\r\n\t '></>");
}

} // namespace tibxml::reader::test
