// Functions, operators and comparisons.
#include <gtest/gtest.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

constexpr char const* sample =
    "<r xml:lang='en'><n>1</n><n>2</n><n>3.5</n><t> a  b\n</t><w>x</w><w>y</w><v>y</v><v>z</v>"
    "<p xml:lang='de-CH'><q k='7'>m</q></p><e/><u>\xC3\xA4\xE4\xB8\xAD\xF0\x9F\x98\x80</u>"
    "<p:x xmlns:p='urn:p' p:k='1'/><?target data?></r>";

// Whether an expression is true at the document's root element.
bool isTrue(Tree const& tree, std::wstring const& expression) {
    return !tree.select(L"self::node()[boolean(" + expression + L")]", tree.element()).empty();
}

struct Text {
    wchar_t const* expression;
    wchar_t const* expected; // as a literal
};

constexpr Text texts[] = {
    {L"1", L"'1'"},
    {L"-1", L"'-1'"},
    {L"0", L"'0'"},
    {L"-0", L"'0'"},
    {L"0.1", L"'0.1'"},
    {L"0.1 + 0.2", L"'0.30000000000000004'"},
    {L"1 div 3", L"'0.3333333333333333'"},
    {L"2 div 3", L"'0.6666666666666666'"},
    {L"100", L"'100'"},
    {L"1.50", L"'1.5'"},
    {L".5", L"'0.5'"},
    {L"-.5", L"'-0.5'"},
    {L"5.", L"'5'"},
    {L"1000000", L"'1000000'"},
    {L"123456789012", L"'123456789012'"},
    {L"1000000000000000000000", L"'1000000000000000000000'"},
    {L"0.000001", L"'0.000001'"},
    {L"0.0000000001", L"'0.0000000001'"},
    {L"9007199254740993", L"'9007199254740992'"},
    {L"1 div 0", L"'Infinity'"},
    {L"-1 div 0", L"'-Infinity'"},
    {L"0 div 0", L"'NaN'"},
    {L"number('x')", L"'NaN'"},
    {L"true()", L"'true'"},
    {L"false()", L"'false'"},
    {L"'x'", L"'x'"},
    {L"''", L"''"},
    {L"n", L"'1'"},
    {L"zz", L"''"},
    {L"e", L"''"},
    {L"p", L"'m'"},
    {L"p/q/@k", L"'7'"},
    {L"processing-instruction()", L"'data'"},
    {L"concat('a', 1, true(), n)", L"'a1true1'"},
    {L"concat('a', '', 'b')", L"'ab'"},
    {L"substring-before('1999/04/01', '/')", L"'1999'"},
    {L"substring-before('abc', 'x')", L"''"},
    {L"substring-before('abc', '')", L"''"},
    {L"substring-after('1999/04/01', '/')", L"'04/01'"},
    {L"substring-after('1999/04/01', '19')", L"'99/04/01'"},
    {L"substring-after('abc', 'x')", L"''"},
    {L"substring-after('abc', '')", L"'abc'"},
    {L"substring('12345', 2, 3)", L"'234'"},
    {L"substring('12345', 2)", L"'2345'"},
    {L"substring('12345', 1.5, 2.6)", L"'234'"},
    {L"substring('12345', 0, 3)", L"'12'"},
    {L"substring('12345', 0 div 0, 3)", L"''"},
    {L"substring('12345', 1, 0 div 0)", L"''"},
    {L"substring('12345', -42, 1 div 0)", L"'12345'"},
    {L"substring('12345', -1 div 0, 1 div 0)", L"''"},
    {L"substring('12345', -1 div 0)", L"'12345'"},
    {L"substring('12345', 1 div 0)", L"''"},
    {L"substring('12345', 6)", L"''"},
    {L"substring('12345', 5)", L"'5'"},
    {L"substring('', 1)", L"''"},
    {L"substring(u, 2, 1)", L"'\u4e2d'"},
    {L"substring(u, 3)", L"'\U0001F600'"},
    {L"normalize-space('  a \t\r\n b  ')", L"'a b'"},
    {L"normalize-space('')", L"''"},
    {L"normalize-space('   ')", L"''"},
    {L"normalize-space(t)", L"'a b'"},
    {L"normalize-space('a\u00a0 b')", L"'a\u00a0 b'"},
    {L"translate('bar', 'abc', 'ABC')", L"'BAr'"},
    {L"translate('--aaa--', 'abc-', 'ABC')", L"'AAA'"},
    {L"translate('abc', '', 'x')", L"'abc'"},
    {L"translate('abc', 'aa', 'xy')", L"'xbc'"},
    {L"translate('abc', 'b', 'xyz')", L"'axc'"},
    {L"translate('\u00e4\u4e2d', '\u4e2d\u00e4', 'x\U0001F600')", L"'\U0001F600x'"},
    {L"name()", L"'r'"},
    {L"name(//@*[. = '1'])", L"'p:k'"},
    {L"local-name(//@*[. = '1'])", L"'k'"},
    {L"namespace-uri(//@*[. = '1'])", L"'urn:p'"},
    {L"namespace-uri()", L"''"},
    {L"name(/)", L"''"},
    {L"name(zz)", L"''"},
    {L"name(n/text())", L"''"},
    {L"name(processing-instruction())", L"'target'"},
    {L"local-name(processing-instruction())", L"'target'"},
    {L"namespace-uri(processing-instruction())", L"''"},
    {L"name(@xml:lang)", L"'xml:lang'"},
    {L"namespace-uri(@xml:lang)", L"'http://www.w3.org/XML/1998/namespace'"},
    {L"name(w | n)", L"'n'"},
    {L"string(p/q/.. | w)", L"'x'"},
};

struct Number {
    wchar_t const* expression;
    wchar_t const* expected;
};

constexpr Number numbers[] = {
    {L"1 + 2 * 3", L"7"},
    {L"(1 + 2) * 3", L"9"},
    {L"10 - 2 - 3", L"5"},
    {L"100 div 5 div 2", L"10"},
    {L"2 * 3 mod 4", L"2"},
    {L"5 mod 2", L"1"},
    {L"5 mod -2", L"1"},
    {L"-5 mod 2", L"-1"},
    {L"-5 mod -2", L"-1"},
    {L"1.5 mod 0.5", L"0"},
    {L"--3", L"3"},
    {L"- - -3", L"-3"},
    {L"-n", L"-1"},
    {L"count(n)", L"3"},
    {L"count(zz)", L"0"},
    {L"count(n | n)", L"3"},
    {L"count(//node()/ancestor-or-self::node())", L"count(//node()) + 1"},
    {L"sum(n)", L"6.5"},
    {L"sum(zz)", L"0"},
    {L"number('12')", L"12"},
    {L"number(' \t\r\n12 ')", L"12"},
    {L"number('-12.5')", L"-12.5"},
    {L"number('.5')", L"0.5"},
    {L"number('5.')", L"5"},
    {L"number(true())", L"1"},
    {L"number(false())", L"0"},
    {L"number(n)", L"1"},
    {L"string-length('')", L"0"},
    {L"string-length('abc')", L"3"},
    {L"string-length(u)", L"3"},
    {L"string-length(t)", L"6"},
    {L"floor(2.6)", L"2"},
    {L"floor(-2.5)", L"-3"},
    {L"ceiling(2.2)", L"3"},
    {L"ceiling(-2.5)", L"-2"},
    {L"round(2.5)", L"3"},
    {L"round(2.4)", L"2"},
    {L"round(-2.5)", L"-2"},
    {L"round(-2.6)", L"-3"},
    {L"round(0.49999999999999994)", L"0"},
    {L"round(4503599627370497)", L"4503599627370497"},
    {L"1 div round(-0.2)", L"-1 div 0"},
    {L"1 div -0", L"-1 div 0"},
    {L"1 div ceiling(-0.5)", L"-1 div 0"},
    {L"round(1 div 0)", L"1 div 0"},
};

constexpr wchar_t const* notNumbers[] = {
    L"''",      L"' '",        L"'-'",      L"'.'",   L"'-.'",  L"'+1'",  L"'1e3'",
    L"'1 2'",   L"'0x10'",     L"'1,5'",    L"'--1'", L"'- 1'", L"'inf'", L"'NaN'",
    L"'1.2.3'", L"'Infinity'", L"'\u0661'", L"zz",    L"w",
};

constexpr wchar_t const* truths[] = {
    L"string(number()) = 'NaN'",
    L"n[number() = 2]",
    L"1",
    L"'x'",
    L"'false'",
    L"n",
    L"not(0)",
    L"not('')",
    L"not(zz)",
    L"not(0 div 0)",
    L"-1",
    L"1 div 0",
    L"true() and true()",
    L"false() or true()",
    L"n = 2",
    L"n = '2'",
    L"n != 2",
    L"not(n = 4)",
    L"n > 3",
    L"n >= 3.5",
    L"not(n > 3.5)",
    L"3 < n",
    L"not(3.5 < n)",
    L"n < 2",
    L"w = v",
    L"w != v",
    L"not(w = n)",
    L"not(zz = zz)",
    L"not(zz != zz)",
    L"not(n = zz)",
    L"not(n != zz)",
    L"not(v[1] != w[2])",
    L"v[1] = w[2]",
    L"n < n",
    L"n <= n",
    L"not(n[1] < n[1])",
    L"not(w < n)",
    L"not(w >= w)",
    L"n = true()",
    L"zz = false()",
    L"not(zz = true())",
    L"zz != true()",
    L"n > zz = false()",
    L"zz < true()",
    L"1 = true()",
    L"'x' = true()",
    L"'' = false()",
    L"5 > true()",
    L"not(5 < true())",
    L"'1' = 1",
    L"'1.0' = 1",
    L"not('1.0' = '1')",
    L"'a' != 'b'",
    L"'2' < '10'",
    L"not('a' < 'b')",
    L"not(0 div 0 = 0 div 0)",
    L"0 div 0 != 0 div 0",
    L"0 = -0",
    L"1 < 2 < 3",
    L"3 > 2 > 0",
    L"not(3 > 2 > 1)",
    L"1 = 1 = true()",
    L"contains('abc', 'b')",
    L"contains('abc', '')",
    L"not(contains('abc', 'x'))",
    L"contains('', '')",
    L"starts-with('abc', 'ab')",
    L"starts-with('abc', '')",
    L"not(starts-with('abc', 'b'))",
    L"not(starts-with('a', 'ab'))",
    L"lang('en')",
    L"lang('EN')",
    L"not(lang('e'))",
    L"not(lang(''))",
    L"not(lang('en-GB'))",
    L"p[lang('de')]",
    L"p/q[lang('de')]",
    L"p/q/@k[lang('DE-ch')]",
    L"p/q/text()[lang('de')]",
    L"not(p/q[lang('en')])",
    L"not(p/q[lang('de-C')])",
    L"not(/self::node()[lang('en')])",
    L"position() = 1",
    L"last() = 1",
    L"not(id('x'))",
    L"boolean('x')",
    L"false() = false() and 1",
};

} // namespace

TEST(Function, givesText) {
    Tree const tree{sample};
    for (Text const& row : texts) {
        EXPECT_TRUE(
            isTrue(tree, L"string(" + std::wstring{row.expression} + L") = " + row.expected))
            << narrow(row.expression) << " is not " << narrow(row.expected);
    }
}

TEST(Function, givesNumbers) {
    Tree const tree{sample};
    for (Number const& row : numbers) {
        std::wstring comparison{L"("};
        comparison.append(row.expression).append(L") = (").append(row.expected).append(L")");
        EXPECT_TRUE(isTrue(tree, comparison)) << narrow(comparison);
    }
}

TEST(Function, numberIsNaNForAllOtherText) {
    Tree const tree{sample};
    for (wchar_t const* text : notNumbers) {
        EXPECT_TRUE(isTrue(tree, L"string(number(" + std::wstring{text} + L")) = 'NaN'"))
            << narrow(text);
    }
}

TEST(Function, comparesAndConverts) {
    Tree const tree{sample};
    for (wchar_t const* expression : truths)
        EXPECT_TRUE(isTrue(tree, expression)) << narrow(expression);
}

TEST(Function, hugeAndTinyNumbersHaveNoExponent) {
    Tree const tree{"<r/>"};
    std::wstring const huge = L"1" + std::wstring(400, L'0');
    EXPECT_TRUE(isTrue(tree, huge + L" = 1 div 0"));
    EXPECT_TRUE(isTrue(tree, L"number('-" + huge + L"') = -1 div 0"));
    std::wstring const tiny = L"0." + std::wstring(400, L'0') + L"1";
    EXPECT_TRUE(isTrue(tree, tiny + L" = 0"));
    std::wstring const small = L"0." + std::wstring(99, L'0') + L"1";
    EXPECT_TRUE(isTrue(tree, L"string(" + small + L") = '" + small + L"'"));
    std::wstring const large = L"1" + std::wstring(22, L'0');
    EXPECT_TRUE(isTrue(tree, L"string(" + large + L") = '" + large + L"'"));
}

TEST(Function, positionAndLastBelongToTheirOwnPredicate) {
    Tree const tree{"<r><a><b id='1'/><b id='2'/></a><a><b id='3'/></a></r>"};
    EXPECT_EQ(tree.describe(L"/r/a[b[last()=2]]/b[last()]"), "b#2");
    EXPECT_EQ(tree.describe(L"/r/a[count(b[position()=1]) = position()]/b"), "b#1 b#2");
    EXPECT_EQ(tree.describe(L"//b[position() = count(../preceding-sibling::a) + 1]"), "b#1");
    EXPECT_EQ(tree.describe(L"//b[last() > 1]"), "b#1 b#2");
}

} // namespace tibxml::query::test
