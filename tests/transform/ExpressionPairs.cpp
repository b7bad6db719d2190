#include "Pairs.h"

// Expressions and functions.

namespace transforming {

namespace {

constexpr char const* list = R"~(<list><i n='2'>two</i><i n='10'>ten</i><i n='1'>one</i></list>)~";
constexpr char const* book =
    R"~(<book><ch id='a'><t>First</t><p>One <em>bold</em> word.</p><p>Two</p></ch><ch id='b'><t>Second</t><p>Three</p></ch></book>)~";
constexpr char const* spaces =
    R"~(<r xmlns='urn:d' xmlns:p='urn:p'><p:a p:x='1' y='2'/><b xmlns=''><c/></b></r>)~";

// clang-format off
constexpr Pair const pairs[] = {
    {"Arithmetic",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="1+2*3"/></v><v>)~"
     R"~(<xsl:value-of select="7 mod 3"/></v><v><xsl:value-of select="7 div )~"
     R"~(2"/></v><v><xsl:value-of select="-3 mod 2"/></v><v><xsl:value-of )~"
     R"~(select="1 div 0"/></v><v><xsl:value-of select="0 div 0"/></v><v>)~"
     R"~(<xsl:value-of select="1.5 + 1.5"/></v></o></xsl:template>)~",
     list},
    {"Comparisons",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="1 &lt; 2"/></v><v>)~"
     R"~(<xsl:value-of select="'a'='a'"/></v><v><xsl:value-of select="//i = )~"
     R"~(10"/></v><v><xsl:value-of select="//i/@n = 10"/></v><v><xsl:value-of )~"
     R"~(select="not(//x)"/></v><v><xsl:value-of select="//i/@n != 1"/></v></o>)~"
     R"~(</xsl:template>)~",
     list},
    {"Strings",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="concat('a','b',1)"/></v><v><xsl:value-of )~"
     R"~(select="substring('12345',2,3)"/></v><v><xsl:value-of )~"
     R"~(select="substring('12345',1.5,2.6)"/></v><v><xsl:value-of )~"
     R"~(select="substring-before('a-b','-')"/></v><v><xsl:value-of )~"
     R"~(select="substring-after('a-b','-')"/></v><v><xsl:value-of )~"
     R"~(select="contains('abc','b')"/></v><v><xsl:value-of )~"
     R"~(select="starts-with('abc','b')"/></v><v><xsl:value-of )~"
     R"~(select="normalize-space('  a  b ')"/></v><v><xsl:value-of )~"
     R"~(select="translate('bar','abc','AB')"/></v><v><xsl:value-of )~"
     R"~(select="string-length('häß')"/></v></o></xsl:template>)~",
     list},
    {"StringsOfSupplementaryCharacters",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="string-length('&#x1F600;x')"/></v><v><xsl:value-of )~"
     R"~(select="substring('&#x1F600;x',2)"/></v><v><xsl:value-of )~"
     R"~(select="translate('&#x1F600;','&#x1F600;','y')"/></v></o>)~"
     R"~(</xsl:template>)~",
     list},
    {"Numbers",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="number('12')"/>)~"
     R"~(</v><v><xsl:value-of select="number('x')"/></v><v><xsl:value-of )~"
     R"~(select="sum(//i/@n)"/></v><v><xsl:value-of select="floor(2.7)"/></v>)~"
     R"~(<v><xsl:value-of select="ceiling(2.1)"/></v><v><xsl:value-of )~"
     R"~(select="round(2.5)"/></v><v><xsl:value-of select="round(-2.5)"/></v>)~"
     R"~(</o></xsl:template>)~",
     list},
    {"Booleans",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="boolean('')"/></v>)~"
     R"~(<v><xsl:value-of select="boolean('0')"/></v><v><xsl:value-of )~"
     R"~(select="boolean(0)"/></v><v><xsl:value-of select="true()"/></v><v>)~"
     R"~(<xsl:value-of select="false()"/></v><v><xsl:value-of select="true() )~"
     R"~(and not(false())"/></v></o></xsl:template>)~",
     list},
    {"Names",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="name(/*)"/></v><v>)~"
     R"~(<xsl:value-of select="local-name(/*/*[1])"/></v><v><xsl:value-of )~"
     R"~(select="namespace-uri(/*/*[1])"/></v><v><xsl:value-of )~"
     R"~(select="name(/*/*[1]/@*[1])"/></v></o></xsl:template>)~",
     spaces},
    {"Axes",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="name(//em/ancestor::*[1])"/></v><v><xsl:value-of )~"
     R"~(select="count(//t/following::*)"/></v><v><xsl:value-of )~"
     R"~(select="count(//em/preceding::*)"/></v><v><xsl:value-of )~"
     R"~(select="name(//p[2]/preceding-sibling::*[1])"/></v><v><xsl:value-of )~"
     R"~(select="name(//t[1]/following-sibling::*[last()])"/></v><v>)~"
     R"~(<xsl:value-of select="count(//ch/descendant-or-self::*)"/></v><v>)~"
     R"~(<xsl:value-of select="count(//em/ancestor-or-self::*)"/></v><v>)~"
     R"~(<xsl:value-of select="name(//em/..)"/></v></o></xsl:template>)~",
     book},
    {"NamespaceAxis",
     R"~(<xsl:template match='/'><o><xsl:for-each )~"
     R"~(select="//*[local-name()='c']/namespace::*"><xsl:sort )~"
     R"~(select="name()"/><v n="{name()}"><xsl:value-of select="."/></v>)~"
     R"~(</xsl:for-each></o></xsl:template>)~",
     spaces},
    {"Positions",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="//i[last()]"/></v>)~"
     R"~(<v><xsl:value-of select="//i[position()&gt;1][1]"/></v><v>)~"
     R"~(<xsl:value-of select="(//i)[2]"/></v><v><xsl:value-of )~"
     R"~(select="count(//i[@n][. != 'ten'])"/></v></o></xsl:template>)~",
     list},
    {"PrecedencePositions",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="//p[1]"/></v><v>)~"
     R"~(<xsl:value-of select="(//p)[1]"/></v><v><xsl:value-of )~"
     R"~(select="count(//p[1])"/></v></o></xsl:template>)~",
     book},
    {"Unions",
     R"~(<xsl:template match='/'><o><xsl:for-each select="//t|//em|//@id"><v )~"
     R"~(n="{name()}"/></xsl:for-each></o></xsl:template>)~",
     book},
    {"Key",
     R"~(<xsl:key name='k' match='i' use='@n'/><xsl:template match='/'><o><v>)~"
     R"~(<xsl:value-of select="key('k','10')"/></v><v><xsl:value-of )~"
     R"~(select="count(key('k',//i/@n))"/></v><v><xsl:value-of )~"
     R"~(select="count(key('k','none'))"/></v></o></xsl:template>)~",
     list},
    {"KeyWithSeveralValues",
     R"~(<xsl:key name='k' match='ch' use='p'/><xsl:template match='/'><o><v>)~"
     R"~(<xsl:value-of select="key('k','Two')/@id"/></v><v><xsl:value-of )~"
     R"~(select="key('k','Three')/@id"/></v></o></xsl:template>)~",
     book},
    {"TwoKeysOfOneName",
     R"~(<xsl:key name='k' match='t' use='.'/><xsl:key name='k' match='p' )~"
     R"~(use='.'/><xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="name(key('k','First'))"/></v><v><xsl:value-of )~"
     R"~(select="name(key('k','Two'))"/></v></o></xsl:template>)~",
     book},
    {"Current",
     R"~(<xsl:template match='/'><o><xsl:for-each select="//i"><v>)~"
     R"~(<xsl:value-of select="count(//i[@n &lt; current()/@n])"/></v>)~"
     R"~(</xsl:for-each></o></xsl:template>)~",
     list},
    {"GenerateIdIsStable",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="generate-id(//i[1])=generate-id(/list/i[1])"/></v><v>)~"
     R"~(<xsl:value-of select="generate-id(//i[1])=generate-id(//i[2])"/></v>)~"
     R"~(<v><xsl:value-of select="string-length(generate-id(//x))"/></v></o>)~"
     R"~(</xsl:template>)~",
     list},
    {"FormatNumber",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="format-number(1234.567,'#,##0.00')"/></v><v><xsl:value-of )~"
     R"~(select="format-number(0.256,'00%')"/></v><v><xsl:value-of )~"
     R"~(select="format-number(-5,'0;(0)')"/></v><v><xsl:value-of )~"
     R"~(select="format-number(12,'000.#')"/></v><v><xsl:value-of )~"
     R"~(select="format-number(1 div 0,'0')"/></v></o></xsl:template>)~",
     list},
    {"DecimalFormat",
     R"~(<xsl:decimal-format name='e' decimal-separator=',' )~"
     R"~(grouping-separator='.'/><xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="format-number(1234.5,'#.##0,00','e')"/></v></o></xsl:template>)~",
     list},
    {"DecimalFormatNames",
     R"~(<xsl:decimal-format infinity='inf' NaN='nan' minus-sign='m'/>)~"
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="format-number(1 )~"
     R"~(div 0,'0')"/></v><v><xsl:value-of select="format-number(0 div )~"
     R"~(0,'0')"/></v><v><xsl:value-of select="format-number(-1,'0')"/></v></o>)~"
     R"~(</xsl:template>)~",
     list},
    {"SystemProperty",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="system-property('xsl:version')"/></v><v><xsl:value-of )~"
     R"~(select="system-property('none')"/></v></o></xsl:template>)~",
     list},
    {"Available",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="element-available('xsl:if')"/></v><v><xsl:value-of )~"
     R"~(select="element-available('xsl:nothing')"/></v><v><xsl:value-of )~"
     R"~(select="function-available('key')"/></v><v><xsl:value-of )~"
     R"~(select="function-available('nothing')"/></v></o></xsl:template>)~",
     list},
    {"NodeSetIsAvailable",
     R"~(<xsl:template match='/' xmlns:e='http://exslt.org/common'><o>)~"
     R"~(<xsl:value-of select="function-available('e:node-set')"/></o>)~"
     R"~(</xsl:template>)~",
     list},
    {"Lang",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="count(//*[lang('en')])"/></v><v><xsl:value-of )~"
     R"~(select="count(//*[lang('de')])"/></v></o></xsl:template>)~",
     R"~(<r xml:lang='en-GB'><a xml:lang='de'/><b/></r>)~"},
    {"Id",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="name(id('k'))"/>)~"
     R"~(</v><v><xsl:value-of select="count(id('k l'))"/></v></o>)~"
     R"~(</xsl:template>)~",
     R"~(<r><a xml:id='k'/><b xml:id='l'/></r>)~"},
    {"StringValues",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="/"/></v><v>)~"
     R"~(<xsl:value-of select="//ch[1]"/></v><v><xsl:value-of select="//p"/>)~"
     R"~(</v><v><xsl:value-of select="//@id"/></v></o></xsl:template>)~",
     book},
    {"CdataIsText",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="count(/r/node())"/></v><v><xsl:value-of )~"
     R"~(select="count(/r/text())"/></v><v><xsl:value-of select="/r"/></v><v>)~"
     R"~(<xsl:value-of select="string-length(/r/text()[1])"/></v></o>)~"
     R"~(</xsl:template>)~",
     R"~(<r>x<![CDATA[y]]>z</r>)~"},
    {"StringOfFragment",
     R"~(<xsl:template match='/'><o><xsl:variable name="f">a<b>c</b>)~"
     R"~(</xsl:variable><xsl:value-of select="concat($f,'!')"/></o>)~"
     R"~(</xsl:template>)~",
     list},
    {"BooleanOfFragment",
     R"~(<xsl:template match='/'><o><xsl:variable name="f"/><xsl:value-of )~"
     R"~(select="boolean($f)"/></o></xsl:template>)~",
     list},
    {"VariablesInPredicates",
     R"~(<xsl:template match='/'><o><xsl:variable name="n" select="2"/>)~"
     R"~(<xsl:value-of select="//i[$n]"/><xsl:value-of select="//i[@n=$n]"/>)~"
     R"~(</o></xsl:template>)~",
     list},
    {"UnparsedEntity",
     R"~(<xsl:template match='/'><o><v><xsl:value-of )~"
     R"~(select="unparsed-entity-uri('none')"/></v></o></xsl:template>)~",
     list},
    {"DeepPaths",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="count(/*/*/*)"/>)~"
     R"~(</v><v><xsl:value-of select="/book/ch[@id='b']/t"/></v><v>)~"
     R"~(<xsl:value-of select="//ch[t='First']/p[2]"/></v><v><xsl:value-of )~"
     R"~(select="/descendant::p[3]"/></v></o></xsl:template>)~",
     book},
    {"LargeNumbersOfNodes",
     R"~(<xsl:template match='/'><o><xsl:for-each select="//i"><xsl:for-each )~"
     R"~(select="//i"><xsl:for-each select="//i"><v/></xsl:for-each>)~"
     R"~(</xsl:for-each></xsl:for-each></o></xsl:template>)~",
     list},
    {"NumbersAsText",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="100000000000"/>)~"
     R"~(</v><v><xsl:value-of select="0.1 + 0.2"/></v><v><xsl:value-of )~"
     R"~(select="1 div 4"/></v><v><xsl:value-of select="0.5"/></v><v>)~"
     R"~(<xsl:value-of select="1000000 * 1000000"/></v></o></xsl:template>)~",
     list},
};
// clang-format on

} // namespace

std::span<Pair const> expressionPairs() noexcept {
    return pairs;
}

} // namespace transforming
