#include "Pairs.h"

// Making nodes, choosing, repeating, sorting, numbering.

namespace transforming {

namespace {

constexpr char const* list = R"~(<list><i n='2'>two</i><i n='10'>ten</i><i n='1'>one</i></list>)~";
constexpr char const* book =
    R"~(<book><ch id='a'><t>First</t><p>One <em>bold</em> word.</p><p>Two</p></ch><ch id='b'><t>Second</t><p>Three</p></ch></book>)~";
constexpr char const* spaces =
    R"~(<r xmlns='urn:d' xmlns:p='urn:p'><p:a p:x='1' y='2'/><b xmlns=''><c/></b></r>)~";

// clang-format off
constexpr Pair const pairs[] = {
    {"ValueOf",
     R"~(<xsl:template match='/'><o><v><xsl:value-of select="//i[2]"/></v><v>)~"
     R"~(<xsl:value-of select="//i/@n"/></v><v><xsl:value-of )~"
     R"~(select="count(//i)"/></v></o></xsl:template>)~",
     list},
    {"LiteralAttributes",
     R"~(<xsl:template match='/'><r a="{count(//i)}-{//i[1]}" b="{{x}}"/>)~"
     R"~(</xsl:template>)~",
     list},
    {"LiteralNamespaces",
     R"~(<xsl:template match='/'><r xmlns="urn:r" xmlns:q="urn:q"><q:a )~"
     R"~(q:b="1"/></r></xsl:template>)~",
     list},
    {"ExcludedNamespaces",
     R"~(<xsl:template match='/'><r xmlns:q="urn:q" )~"
     R"~(xsl:exclude-result-prefixes="q"/></xsl:template>)~",
     list},
    {"NamespaceAlias",
     R"~(<xsl:namespace-alias stylesheet-prefix='x' result-prefix='xsl'/>)~"
     R"~(<xsl:template match='/'><x:stylesheet version="1.0"><x:template )~"
     R"~(match="/"/></x:stylesheet></xsl:template>)~",
     list},
    {"NamespaceAliasToDefault",
     R"~(<xsl:namespace-alias stylesheet-prefix='x' result-prefix='#default'/>)~"
     R"~(<xsl:template match='/'><x:r/></xsl:template>)~",
     list},
    {"Text",
     R"~(<xsl:template match='/'><r><xsl:text> a </xsl:text> b )~"
     R"~(<xsl:text>&#10;</xsl:text></r></xsl:template>)~",
     list},
    {"WhiteSpaceInStylesheet",
     "<xsl:template match='/'><r>\n  <a/>\n  <xsl:text> </xsl:text>\n  <b> c "
     R"~(</b></r></xsl:template>)~",
     list},
    {"DisabledEscaping",
     R"~(<xsl:template match='/'><r><xsl:text )~"
     R"~(disable-output-escaping="yes">plain</xsl:text> more</r></xsl:template>)~",
     list},
    {"Element",
     R"~(<xsl:template match='/'><r><xsl:element name="{name(/*)}">)~"
     R"~(<xsl:attribute name="a">1</xsl:attribute></xsl:element></r>)~"
     R"~(</xsl:template>)~",
     list},
    {"ElementInNamespace",
     R"~(<xsl:template match='/'><r><xsl:element name="p:e" )~"
     R"~(namespace="urn:{1+1}"/></r></xsl:template>)~",
     list},
    {"ElementInDefaultNamespace",
     R"~(<xsl:template match='/'><r><xsl:element name="e" namespace="urn:e">)~"
     R"~(<xsl:element name="f"/></xsl:element></r></xsl:template>)~",
     list},
    {"ElementWithKnownPrefix",
     R"~(<xsl:template match='/'><r><xsl:element name="x:e"/></r>)~"
     R"~(</xsl:template>)~",
     list},
    {"AttributeInNamespace",
     R"~(<xsl:template match='/'><r><xsl:attribute name="a" )~"
     R"~(namespace="urn:a">v</xsl:attribute></r></xsl:template>)~",
     list},
    {"AttributeWithPrefix",
     R"~(<xsl:template match='/'><r><xsl:attribute name="x:a">v</xsl:attribute>)~"
     R"~(</r></xsl:template>)~",
     list},
    {"AttributesReplaceEachOther",
     R"~(<xsl:template match='/'><r a="1"><xsl:attribute )~"
     R"~(name="a">2</xsl:attribute></r></xsl:template>)~",
     list},
    {"AttributeOfManyPieces",
     R"~(<xsl:template match='/'><r><xsl:attribute name="a"><xsl:for-each )~"
     R"~(select="//i"><xsl:value-of select="."/>,</xsl:for-each>)~"
     R"~(</xsl:attribute></r></xsl:template>)~",
     list},
    {"AttributeSet",
     R"~(<xsl:attribute-set name='s'><xsl:attribute name='a'>1</xsl:attribute>)~"
     R"~(<xsl:attribute name='b'>2</xsl:attribute></xsl:attribute-set>)~"
     R"~(<xsl:template match='/'><r xsl:use-attribute-sets="s" b="3"/>)~"
     R"~(</xsl:template>)~",
     list},
    {"AttributeSetOfSets",
     R"~(<xsl:attribute-set name='s' use-attribute-sets='t'><xsl:attribute )~"
     R"~(name='a'>1</xsl:attribute></xsl:attribute-set><xsl:attribute-set )~"
     R"~(name='t'><xsl:attribute name='c'>4</xsl:attribute></xsl:attribute-set>)~"
     R"~(<xsl:template match='/'><r><xsl:element name="e" )~"
     R"~(use-attribute-sets="s"/></r></xsl:template>)~",
     list},
    {"AttributeSetOnCopy",
     R"~(<xsl:attribute-set name='s'><xsl:attribute name='a'>1</xsl:attribute>)~"
     R"~(</xsl:attribute-set><xsl:template match='/*'><xsl:copy )~"
     R"~(use-attribute-sets="s"/></xsl:template>)~",
     list},
    {"Comment",
     R"~(<xsl:template match='/'><r><xsl:comment>c <xsl:value-of select="1"/>)~"
     R"~(</xsl:comment></r></xsl:template>)~",
     list},
    {"Instruction",
     R"~(<xsl:template match='/'><r><xsl:processing-instruction )~"
     R"~(name="p{1}">d</xsl:processing-instruction></r></xsl:template>)~",
     list},
    {"InstructionsAtTheTop",
     R"~(<xsl:template match='/'><xsl:processing-instruction )~"
     R"~(name="p">d</xsl:processing-instruction><r/>)~"
     R"~(<xsl:comment>e</xsl:comment></xsl:template>)~",
     list},
    {"Copy",
     R"~(<xsl:template match='/*'><xsl:copy><xsl:apply-templates )~"
     R"~(select="i[1]"/></xsl:copy></xsl:template><xsl:template match='i'>)~"
     R"~(<xsl:copy><xsl:value-of select="@n"/></xsl:copy></xsl:template>)~",
     list},
    {"CopyKeepsNamespaces",
     R"~(<xsl:template match='/*'><xsl:copy><xsl:apply-templates select="*"/>)~"
     R"~(</xsl:copy></xsl:template><xsl:template match='*'><xsl:copy/>)~"
     R"~(</xsl:template>)~",
     spaces},
    {"CopyOfNodes",
     R"~(<xsl:template match='/'><r><xsl:copy-of )~"
     R"~(select="//em|//t/text()"/></r></xsl:template>)~",
     book},
    {"CopyOfDocument",
     R"~(<xsl:template match='/'><xsl:copy-of select="."/></xsl:template>)~",
     spaces},
    {"CopyOfSubtree",
     R"~(<xsl:template match='/'><o><xsl:copy-of )~"
     R"~(select="//*[local-name()='a']"/></o></xsl:template>)~",
     spaces},
    {"CopyOfString",
     R"~(<xsl:template match='/'><r><xsl:copy-of select="concat('a',1)"/></r>)~"
     R"~(</xsl:template>)~",
     list},
    {"If",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//i"><xsl:if )~"
     R"~(test="@n &gt; 1"><y/></xsl:if></xsl:for-each></r></xsl:template>)~",
     list},
    {"Choose",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//i"><xsl:choose>)~"
     R"~(<xsl:when test="@n=1"><a/></xsl:when><xsl:when test="@n=2"><b/>)~"
     R"~(</xsl:when><xsl:otherwise><c/></xsl:otherwise></xsl:choose>)~"
     R"~(</xsl:for-each></r></xsl:template>)~",
     list},
    {"ForEach",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//i"><v )~"
     R"~(p="{position()}" l="{last()}"/></xsl:for-each></r></xsl:template>)~",
     list},
    {"ForEachNested",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//ch"><c>)~"
     R"~(<xsl:for-each select="p"><p n="{position()}"/></xsl:for-each></c>)~"
     R"~(</xsl:for-each></r></xsl:template>)~",
     book},
    {"SortText",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//i"><xsl:sort/><v>)~"
     R"~(<xsl:value-of select="."/></v></xsl:for-each></r></xsl:template>)~",
     list},
    {"SortNumbers",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//i"><xsl:sort )~"
     R"~(select="@n" data-type="number"/><v><xsl:value-of select="@n"/></v>)~"
     R"~(</xsl:for-each></r></xsl:template>)~",
     list},
    {"SortDescending",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//i"><xsl:sort )~"
     R"~(select="@n" order="descending"/><v><xsl:value-of select="@n"/></v>)~"
     R"~(</xsl:for-each></r></xsl:template>)~",
     list},
    {"SortByTwoKeys",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//i"><xsl:sort )~"
     R"~(select="@a"/><xsl:sort select="@b" data-type="number" )~"
     R"~(order="descending"/><v><xsl:value-of select="."/></v></xsl:for-each>)~"
     R"~(</r></xsl:template>)~",
     R"~(<l><i a='x' b='1'>1</i><i a='w' b='2'>2</i><i a='x' b='10'>3</i></l>)~"},
    {"SortInApply",
     R"~(<xsl:template match='/'><r><xsl:apply-templates select="//i">)~"
     R"~(<xsl:sort select="string-length(.)"/><xsl:sort select="."/>)~"
     R"~(</xsl:apply-templates></r></xsl:template><xsl:template match='i'><v>)~"
     R"~(<xsl:value-of select="."/></v></xsl:template>)~",
     list},
    {"SortByVariable",
     R"~(<xsl:template match='/'><r><xsl:variable name="o" )~"
     R"~(select="'descending'"/><xsl:for-each select="//i"><xsl:sort )~"
     R"~(select="@n" data-type="number" order="{$o}"/><v><xsl:value-of )~"
     R"~(select="@n"/></v></xsl:for-each></r></xsl:template>)~",
     list},
    {"NumberSimple",
     R"~(<xsl:template match='i'><n><xsl:number/></n></xsl:template>)~"
     R"~(<xsl:template match='list'><r><xsl:apply-templates/></r>)~"
     R"~(</xsl:template>)~",
     list},
    {"NumberValue",
     R"~(<xsl:template match='/'><r><xsl:for-each select="//i"><n><xsl:number )~"
     R"~(value="@n" format="i"/>/<xsl:number value="@n" )~"
     R"~(format="A"/>/<xsl:number value="@n" format="001"/></n></xsl:for-each>)~"
     R"~(</r></xsl:template>)~",
     list},
    {"NumberMultiple",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template match='p'>)~"
     R"~(<p><xsl:number level="multiple" count="ch|p" format="1.a "/></p>)~"
     R"~(</xsl:template>)~",
     book},
    {"NumberAny",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template match='p'>)~"
     R"~(<p><xsl:number level="any" from="book"/></p></xsl:template>)~",
     book},
    {"NumberGrouping",
     R"~(<xsl:template match='/'><r><xsl:number value="1234567" )~"
     R"~(grouping-separator="," grouping-size="3"/></r></xsl:template>)~",
     list},
    {"Message",
     R"~(<xsl:template match='/'><r><xsl:message>hello</xsl:message>)~"
     R"~(<xsl:message><b>x</b></xsl:message></r></xsl:template>)~",
     list},
    {"NodeSet",
     R"~(<xsl:template match='/' xmlns:e='http://exslt.org/common'><r>)~"
     R"~(<xsl:variable name='f'><a>1</a><a>2</a></xsl:variable><xsl:value-of )~"
     R"~(select='count(e:node-set($f)/a)'/><xsl:for-each )~"
     R"~(select='e:node-set($f)/a[2]'><xsl:copy-of select='.'/></xsl:for-each>)~"
     R"~(</r></xsl:template>)~",
     list},
    {"NodeSetOfNodes",
     R"~(<xsl:template match='/' xmlns:e='http://exslt.org/common'><r>)~"
     R"~(<xsl:value-of select='count(e:node-set(//i))'/></r></xsl:template>)~",
     list},
    {"NodeSetOfString",
     R"~(<xsl:template match='/' xmlns:e='http://exslt.org/common'><r>)~"
     R"~(<xsl:value-of select='e:node-set("text")'/></r></xsl:template>)~",
     list},
    {"Grouping",
     R"~(<xsl:key name='k' match='i' use='@g'/><xsl:template match='/'><r>)~"
     R"~(<xsl:for-each select="//i[generate-id()=generate-id(key('k',@g)[1])]">)~"
     R"~(<g n='{@g}'><xsl:copy-of select="key('k',@g)"/></g></xsl:for-each></r>)~"
     R"~(</xsl:template>)~",
     R"~(<l><i g='a'>1</i><i g='b'>2</i><i g='a'>3</i></l>)~"},
    {"CommentOfDashes",
     R"~(<xsl:template match='/'><r><xsl:comment>a- b</xsl:comment></r>)~"
     R"~(</xsl:template>)~",
     list},
};
// clang-format on

} // namespace

std::span<Pair const> constructionPairs() noexcept {
    return pairs;
}

} // namespace transforming
