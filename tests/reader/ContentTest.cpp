#include "Reading.h"

namespace tibxml::reader::test {

struct ContentRow {
    char const* xml;
    char const* shape;
};

TEST(Content, BecomesNodesAsItStands) {
    ContentRow const rows[] = {
        {"<a/>", "<a></>"},
        {"<a>x<![CDATA[y]]>z</a>", "<a>\"x\"[y]\"z\"</>"},
        {"<a><![CDATA[x]]><![CDATA[<&]]></a>", "<a>[x][<&]</>"},
        {"<a>&lt;&gt;&amp;&apos;&quot;</a>", "<a>\"<>&'\"\"</>"},
        {"<a b='&lt;&gt;&amp;&apos;&quot;'/>", "<a b='<>&'\"'></>"},
        {"<a>&#65;&#x1F600;</a>", "<a>\"A\U0001F600\"</>"},
        {"<a>x\r\ny\rz\n</a>", "<a>\"x\ny\nz\n\"</>"},
        {"<a><![CDATA[x\r\ny\rz]]><!--\r\n--><?p \r\n?></a>", "<a>[x\ny\nz]<!\n><?p ></>"},
        {"<!--1--><?p 2?><a/><!--3--><?q 4 ?>", "<!1><?p 2><a></><!3><?q 4 >"},
        {"<a z='1' y='2' x='3'/>", "<a z='1' y='2' x='3'></>"},
        {"<a b=''/>", "<a b=''></>"},
        {"<a><?p?><!----></a>", "<a><?p ><!></>"},
        {"<a>]]&gt;</a>", "<a>\"]]>\"</>"},
    };
    for (ContentRow const& row : rows) {
        Reading const reading = readText(row.xml);
        EXPECT_TRUE(reading.done) << row.xml << ": " << reading.error.reason;
        EXPECT_EQ(shape(reading), row.shape) << row.xml;
    }
}

TEST(Declaration, IsANodeWithItsContent) {
    ContentRow const rows[] = {
        {"<?xml version='1.0'?><a/>", "<?xml version=\"1.0\"><a></>"},
        {"<?xml version='1.0' encoding='utf-8'?><a/>",
         "<?xml version=\"1.0\" encoding=\"utf-8\"><a></>"},
        {"<?xml  version = \"1.0\"  standalone = 'no' ?>\n<a/>",
         "<?xml version=\"1.0\" standalone=\"no\"><a></>"},
        {"<?xml version='1.0' encoding='ISO-8859-1' standalone='yes'?><a/>",
         "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\"><a></>"},
    };
    for (ContentRow const& row : rows) {
        EXPECT_EQ(shape(readText(row.xml)), row.shape) << row.xml;
        EXPECT_EQ(shape(readBytes(Bytes{row.xml})), row.shape) << row.xml;
    }
    Reading const reading = readText(rows[0].xml);
    EXPECT_EQ(reading.top()->firstChild()->kind, tree::NodeKind::declaration);
}

TEST(Declaration, OfAnEncodingDoesNotCountForText) {
    char const* const rows[] = {"UTF-16", "ISO-8859-1", "nonsense", "UCS-4"};
    for (char const* const encoding : rows) {
        std::string const start = std::string{"<?xml version=\"1.0\" encoding=\""} + encoding;
        Reading const reading = readText(start + "\"?><a>\u00E4\u20AC</a>");
        EXPECT_EQ(shape(reading), start + "\"><a>\"\u00E4\u20AC\"</>") << reading.error.reason;
    }
}

TEST(Depth, IsLimited) {
    auto const nested = [](int depth) {
        std::string xml;
        for (int i = 0; i != depth; ++i)
            xml += "<a>";
        for (int i = 0; i != depth; ++i)
            xml += "</a>";
        return xml;
    };
    EXPECT_TRUE(readText(nested(256)).done);
    for (int const depth : {257, 1000, 200000}) {
        Reading const reading = readText(nested(depth));
        expectFailure(reading, "too deep");
        EXPECT_EQ(reading.error.code, errorTooDeep);
    }
}

TEST(Size, IsNotLimited) {
    std::string const text(11000000, 'x'); // more than the parser takes by itself
    Reading const reading = readText("<a b='" + text + "'>" + text + "</a>");
    ASSERT_TRUE(reading.done) << reading.error.reason;
    EXPECT_EQ(reading.root()->firstChild()->text(), text);
    EXPECT_EQ(reading.root()->firstAttribute()->text(), text);
}

TEST(Size, OfNamesIsNotLimitedEither) {
    std::string const name(100000, 'n');
    EXPECT_EQ(readText("<" + name + "/>").root()->name->local, name);
}

} // namespace tibxml::reader::test
