#include <TibXml/WXPath.h>

#include <gtest/gtest.h>

#include "PathParts.h"

namespace {

struct Row {
    wchar_t const* text;
    wchar_t const* result;
};

std::vector<Row> const escapeRows = {
    {L"", L""},
    {L"plain", L"plain"},
    {L"&", L"&amp;"},
    {L"<", L"&lt;"},
    {L">", L"&gt;"},
    {L"'", L"&apos;"},
    {L"\"", L"&quot;"},
    {L"a<b & 'c' > \"d\"", L"a&lt;b &amp; &apos;c&apos; &gt; &quot;d&quot;"},
    {L"&&", L"&amp;&amp;"},
    // named references are not spared
    {L"&amp;", L"&amp;amp;"},
    {L"&lt;", L"&amp;lt;"},
    // no reference at all: no "&#", or none with a ";" after it
    {L"&#", L"&amp;#"},
    {L"&#38", L"&amp;#38"},
    {L";&#38", L";&amp;#38"},
    {L"a;b&c", L"a;b&amp;c"},
    // decimal references are spared
    {L"&#38;", L"&#38;"},
    {L"&#;", L"&#;"},
    {L"&#0000065;", L"&#0000065;"},
    {L"a&#38;b", L"a&#38;b"},
    {L"&#38;&#39;", L"&#38;&#39;"},
    {L"&#38;;", L"&#38;;"},
    {L"&#38;<>'\"", L"&#38;&lt;&gt;&apos;&quot;"},
    {L"<&#38;>", L"&lt;&#38;&gt;"},
    {L"&&#38;", L"&amp;&#38;"},
    {L"&#38;&", L"&#38;&amp;"},
    {L"&#38;&#39", L"&#38;&amp;#39"},
    {L"&#&#38;", L"&amp;#&#38;"},
    // other references are not
    {L"&#x41;", L"&amp;#x41;"},
    {L"&#X41;", L"&amp;#X41;"},
    {L"&#3 8;", L"&amp;#3 8;"},
    {L"&#-1;", L"&amp;#-1;"},
    {L"&#\uFF11;", L"&amp;#\uFF11;"},
    {L"&#x41;&#65;", L"&amp;#x41;&amp;#65;"},
    {L"&lt;&#38;", L"&amp;lt;&amp;#38;"},
    // a ";" between the last "&" and the reference spoils it
    {L"x;&#38;", L"x;&amp;#38;"},
    {L"x;&#38;&#39;", L"x;&amp;#38;&amp;#39;"},
    {L"&#38;x;&#39;", L"&#38;x;&amp;#39;"},
    {L"&;&#38;", L"&amp;;&amp;#38;"},
    {L";&&#38;", L";&amp;&#38;"},
    // at the end of the walk
    {L"&#38;rest", L"&#38;rest"},
    {L"&#a;&", L"&amp;#a;&amp;"},
};

TEST(ReplaceXMLEntities, EscapesAllButDecimalReferences) {
    for (Row const& row : escapeRows) {
        CString text = row.text;
        WXPath::ReplaceXMLEntities(text);
        EXPECT_EQ(printable(wide(text)), printable(row.result)) << printable(row.text);
    }
}

std::vector<Row> const unescapeRows = {
    {L"", L""},
    {L"plain", L"plain"},
    {L"&amp;", L"&"},
    {L"&lt;", L"<"},
    {L"&gt;", L">"},
    {L"&apos;", L"'"},
    {L"&quot;", L"\""},
    {L"&lt;a b=&quot;1&quot;&gt;", L"<a b=\"1\">"},
    {L"&amp;lt;", L"<"},
    {L"&amp;amp;", L"&amp;"},
    {L"&amp;amp;lt;", L"&amp;lt;"},
    {L"&amp;#38;", L"&#38;"},
    {L"&#38;", L"&#38;"},
    {L"&#x41;", L"&#x41;"},
    {L"&AMP;", L"&AMP;"},
    {L"&amp", L"&amp"},
    {L"&", L"&"},
    {L"&unknown;", L"&unknown;"},
};

TEST(UnReplaceXMLEntities, UndoesTheFiveEscapes) {
    for (Row const& row : unescapeRows) {
        CString text = row.text;
        WXPath::UnReplaceXMLEntities(text);
        EXPECT_EQ(printable(wide(text)), printable(row.result)) << printable(row.text);
    }
}

TEST(XmlEntities, OtherOwnersOfTheTextKeepIt) {
    CString const original = L"a<b";
    CString text = original;
    WXPath::ReplaceXMLEntities(text);
    EXPECT_EQ(wide(original), L"a<b");
    EXPECT_EQ(wide(text), L"a&lt;b");
}

// Would take hours if each of them were compared with all the rest of the text.
TEST(ReplaceXMLEntities, ManyAmpersandsTakeNoLongerThanOtherText) {
    std::wstring text;
    for (int i = 0; i < 500000; ++i) {
        text += L"&#";
    }
    CString unended = text.c_str();
    WXPath::ReplaceXMLEntities(unended);
    EXPECT_EQ(unended.GetLength(), 6 * 500000);
    CString ended = (text + L";").c_str();
    WXPath::ReplaceXMLEntities(ended);
    EXPECT_EQ(ended.GetLength(), 6 * 499999 + 3);
}

} // namespace
