#include "Pairs.h"

// Templates, parameters, variables, white space.

namespace transforming {

namespace {

constexpr char const* list = R"~(<list><i n='2'>two</i><i n='10'>ten</i><i n='1'>one</i></list>)~";
constexpr char const* book =
    R"~(<book><ch id='a'><t>First</t><p>One <em>bold</em> word.</p><p>Two</p></ch><ch id='b'><t>Second</t><p>Three</p></ch></book>)~";
constexpr char const* spaces =
    R"~(<r xmlns='urn:d' xmlns:p='urn:p'><p:a p:x='1' y='2'/><b xmlns=''><c/></b></r>)~";

// clang-format off
constexpr Pair const pairs[] = {
    {"Identity",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     book},
    {"IdentityWithNamespaces",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     spaces},
    {"IdentityWithCommentsAndInstructions",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     R"~(<!--a--><?p q?><r><!--b--><?s?></r><!--c-->)~"},
    {"IdentityOfWhiteSpace",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     "<r>\n  <a> </a>\n\t<b>\r\n</b></r>"},
    {"IdentityOfCdata",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     R"~(<r>x<![CDATA[<y>]]>z<a><![CDATA[ ]]></a></r>)~"},
    {"IdentityOfXmlAttributes",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     R"~(<r xml:lang='en' xml:space='preserve' xml:id='i'> <a xml:base='b'/>)~"
     R"~(</r>)~"},
    {"IdentityOfReferences",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     R"~(<r a='&#9;&#10;&lt;&quot;'>&amp;&#13;&#x1F600;</r>)~"},
    {"IdentityWithUndeclaredDefault",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     R"~(<r xmlns='urn:d'><a xmlns=''><b xmlns='urn:d'/></a></r>)~"},
    {"IdentityWithRedeclaredPrefix",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     R"~(<p:r xmlns:p='urn:1'><p:a xmlns:p='urn:2' p:b='c'/><p:d/></p:r>)~"},
    {"BuiltInRules",
     R"~(<xsl:template match='book'><r><xsl:apply-templates/></r>)~"
     R"~(</xsl:template>)~",
     book},
    {"MatchByName",
     R"~(<xsl:template match='/'><r><xsl:apply-templates select="//p"/></r>)~"
     R"~(</xsl:template><xsl:template match='p'><q><xsl:apply-templates/></q>)~"
     R"~(</xsl:template>)~",
     book},
    {"MatchByPath",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='ch/t'><title/></xsl:template>)~",
     book},
    {"MatchByDescendant",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='ch//em'><b/></xsl:template>)~",
     book},
    {"MatchByPredicate",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='p[2]'><second/></xsl:template>)~",
     book},
    {"MatchByAttribute",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='@n'><xsl:attribute name='m'><xsl:value-of select='. * 2'/>)~"
     R"~(</xsl:attribute></xsl:template>)~",
     list},
    {"MatchRoot",
     R"~(<xsl:template match='/'><root/></xsl:template>)~",
     list},
    {"MatchText",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='text()'><xsl:value-of select='translate(.,"to","TO")'/>)~"
     R"~(</xsl:template>)~",
     list},
    {"MatchComment",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='comment()'><c/></xsl:template>)~",
     R"~(<r><!--x--></r>)~"},
    {"MatchInstruction",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='processing-instruction("a")'><pi/></xsl:template>)~",
     R"~(<r><?a b?><?c d?></r>)~"},
    {"MatchUnion",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='t|em'><u/></xsl:template>)~",
     book},
    {"MatchId",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='id("k")'><found/></xsl:template>)~",
     R"~(<r><a xml:id='k'/><b/></r>)~"},
    {"MatchKey",
     R"~(<xsl:key name='k' match='ch' use='@id'/><xsl:template )~"
     R"~(match='@*|node()'><xsl:copy><xsl:apply-templates select='@*|node()'/>)~"
     R"~(</xsl:copy></xsl:template><xsl:template match='key("k","b")'><found/>)~"
     R"~(</xsl:template>)~",
     book},
    {"MatchInNamespace",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='x:a'><found/></xsl:template>)~",
     R"~(<r xmlns:q='urn:x'><q:a/><a/></r>)~"},
    {"MatchNamespaceWildcard",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template )~"
     R"~(match='x:*'><found/></xsl:template>)~",
     R"~(<r xmlns:q='urn:x'><q:a/><q:b/><a/></r>)~"},
    {"PriorityByForm",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template match='*'>)~"
     R"~(<any/></xsl:template><xsl:template match='i'><named/></xsl:template>)~"
     R"~(<xsl:template match='list'><l><xsl:apply-templates/></l>)~"
     R"~(</xsl:template>)~",
     list},
    {"PriorityByNumber",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template match='i' )~"
     R"~(priority='1'><low/></xsl:template><xsl:template match='i[@n=10]' )~"
     R"~(priority='2'><high/></xsl:template><xsl:template match='i[1]'>)~"
     R"~(<default/></xsl:template>)~",
     list},
    {"LastOfEqualPriority",
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template><xsl:template match='i'>)~"
     R"~(<a/></xsl:template><xsl:template match='i'><b/></xsl:template>)~",
     list},
    {"Modes",
     R"~(<xsl:template match='/'><r><xsl:apply-templates/><xsl:apply-templates )~"
     R"~(mode="m"/></r></xsl:template><xsl:template match='i'><plain/>)~"
     R"~(</xsl:template><xsl:template match='i' mode='m'><mode/></xsl:template>)~",
     list},
    {"ModeWithBuiltInRules",
     R"~(<xsl:template match='/'><r><xsl:apply-templates mode="m"/></r>)~"
     R"~(</xsl:template><xsl:template match='em' mode='m'><e/></xsl:template>)~",
     book},
    {"NamedTemplate",
     R"~(<xsl:template match='/'><r><xsl:call-template name="t"/></r>)~"
     R"~(</xsl:template><xsl:template name='t'><called/></xsl:template>)~",
     list},
    {"Parameters",
     R"~(<xsl:template match='/'><r><xsl:call-template name="t">)~"
     R"~(<xsl:with-param name="a" select="1+1"/><xsl:with-param name="b"><x1/>)~"
     R"~(</xsl:with-param></xsl:call-template></r></xsl:template><xsl:template )~"
     R"~(name='t'><xsl:param name='a'/><xsl:param name='b'/><xsl:param )~"
     R"~(name='c' select='"default"'/><v a='{$a}' c='{$c}'><xsl:copy-of )~"
     R"~(select='$b'/></v></xsl:template>)~",
     list},
    {"ParametersThroughApply",
     R"~(<xsl:template match='/'><r><xsl:apply-templates select="//i">)~"
     R"~(<xsl:with-param name="p" select="5"/></xsl:apply-templates></r>)~"
     R"~(</xsl:template><xsl:template match='i'><xsl:param name="p" )~"
     R"~(select="0"/><v><xsl:value-of select="$p + @n"/></v></xsl:template>)~",
     list},
    {"Recursion",
     R"~(<xsl:template match='/'><r><xsl:call-template name="t">)~"
     R"~(<xsl:with-param name="n" select="20"/></xsl:call-template></r>)~"
     R"~(</xsl:template><xsl:template name='t'><xsl:param name='n'/><xsl:if )~"
     R"~(test='$n &gt; 0'><n><xsl:value-of select='$n'/></n><xsl:call-template )~"
     R"~(name='t'><xsl:with-param name='n' select='$n - 1'/>)~"
     R"~(</xsl:call-template></xsl:if></xsl:template>)~",
     list},
    {"GlobalVariable",
     R"~(<xsl:variable name='g' select='count(//i)'/><xsl:template match='/'>)~"
     R"~(<r><xsl:value-of select="$g"/></r></xsl:template>)~",
     list},
    {"GlobalVariableShadowed",
     R"~(<xsl:variable name='g' select='1'/><xsl:template match='/'><r>)~"
     R"~(<xsl:variable name="g" select="2"/><xsl:value-of select="$g"/></r>)~"
     R"~(</xsl:template>)~",
     list},
    {"GlobalVariablesInAnyOrder",
     R"~(<xsl:variable name='a' select='$b + 1'/><xsl:variable name='b' )~"
     R"~(select='2'/><xsl:template match='/'><r><xsl:value-of select="$a"/></r>)~"
     R"~(</xsl:template>)~",
     list},
    {"GlobalParameter",
     R"~(<xsl:param name='g' select='"d"'/><xsl:template match='/'><r>)~"
     R"~(<xsl:value-of select="$g"/></r></xsl:template>)~",
     list},
    {"FragmentVariable",
     R"~(<xsl:template match='/'><r><xsl:variable name="f"><a>1</a><b>2</b>)~"
     R"~(</xsl:variable><xsl:value-of select="$f"/><xsl:copy-of select="$f"/>)~"
     R"~(</r></xsl:template>)~",
     list},
    {"EmptyVariable",
     R"~(<xsl:template match='/'><r><xsl:variable name="f"/><xsl:value-of )~"
     R"~(select="string-length($f)"/></r></xsl:template>)~",
     list},
    {"StripSpace",
     R"~(<xsl:strip-space elements='*'/><xsl:template match='@*|node()'>)~"
     R"~(<xsl:copy><xsl:apply-templates select='@*|node()'/></xsl:copy>)~"
     R"~(</xsl:template>)~",
     "<r> <a> </a>\n<b>x </b></r>"},
    {"StripAndPreserveSpace",
     R"~(<xsl:strip-space elements='*'/><xsl:preserve-space elements='a'/>)~"
     R"~(<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates )~"
     R"~(select='@*|node()'/></xsl:copy></xsl:template>)~",
     "<r> <a> </a>\n<b> </b></r>"},
    {"StripSpaceAndXmlSpace",
     R"~(<xsl:strip-space elements='*'/><xsl:template match='@*|node()'>)~"
     R"~(<xsl:copy><xsl:apply-templates select='@*|node()'/></xsl:copy>)~"
     R"~(</xsl:template>)~",
     R"~(<r> <a xml:space='preserve'> <c> </c></a> <b> </b></r>)~"},
    {"StripSpaceBesideCdata",
     R"~(<xsl:strip-space elements='*'/><xsl:template match='@*|node()'>)~"
     R"~(<xsl:copy><xsl:apply-templates select='@*|node()'/></xsl:copy>)~"
     R"~(</xsl:template>)~",
     R"~(<r> <![CDATA[x]]> <a><![CDATA[ ]]></a></r>)~"},
    {"ForwardsCompatible",
     R"~(<xsl:template match='/' xsl:version='9.9'><r><xsl:if )~"
     R"~(test='true()'>y</xsl:if></r></xsl:template>)~",
     list},
    {"Fallback",
     R"~(<xsl:template match='/'><r><x:unknown )~"
     R"~(xsl:extension-element-prefixes='x'><xsl:fallback><fell/>)~"
     R"~(</xsl:fallback></x:unknown></r></xsl:template>)~",
     list},
};
// clang-format on

} // namespace

std::span<Pair const> templatePairs() noexcept {
    return pairs;
}

} // namespace transforming
