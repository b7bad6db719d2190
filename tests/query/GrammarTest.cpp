// What is an expression, and what is said about what is none.
#include <gtest/gtest.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

Namespaces const& namespaces() {
    static Namespaces const declared = Namespaces::parse(L"xmlns:p='urn:p'");
    return declared;
}

constexpr wchar_t const* good[] = {
    L"a",
    L"/",
    L"//a",
    L"a/b//c",
    L" a / b [ 1 ] ",
    L"\ta\n/\rb",
    L".",
    L"..",
    L"./..//.",
    L"@a",
    L"@*",
    L"@p:*",
    L"@p:a",
    L"p:a",
    L"p:*",
    L"*",
    L"* | *",
    L"child::a",
    L"child :: a",
    L"attribute::a",
    L"namespace::a",
    L"processing-instruction('x')",
    L"processing-instruction( )",
    L"text ( )",
    L"a[1][2][last()]",
    L"a[b and c or d]",
    L"and",
    L"or/and",
    L"div[mod]",
    L"mod[div div mod]",
    L"*[* * *]",
    L"a[. = 'x']",
    L"a[.='x\"y']",
    L"a[.=\"x'y\"]",
    L"a[.5 = 0.5]",
    L"a[5. = 5]",
    L"a[-1]",
    L"a[--1]",
    L"a[- - 1 = 1]",
    L"a[1 - 1]",
    L"a[b-c]",
    L"a[b -c]",
    L"(a)",
    L"((a))",
    L"(a | b)[1]",
    L"(a | b)/c",
    L"(a)[1][2]//c",
    L"id('x')",
    L"id('x')/a",
    L"a|b|c",
    L"a[contains(b, 'c')]",
    L"a[count(b) > 1]",
    L"a[not(b)]",
    L"a[true() and false()]",
    L"a[concat('a', 'b', 'c', 'd')]",
    L"a[substring('a', 1)]",
    L"a[substring('a', 1, 2)]",
    L"a[string() = string(.)]",
    L"a[lang('en')]",
    L"a[1 < 2 <= 3 = 4 != 5 > 6 >= 7]",
    L"self::node()",
    L"text",
    L"text/comment",
    L"node[text]",
    L"div",
    L"a.b-c_d",
    L"\u00e4/\u4e2d",
    L"a[. = '\u00e4']",
    L"a['']",
    L"/self::node()",
    L"/*",
    L"/@a",
    L"/ | a",
    L"(/)",
    L"a[/ = b]",
};

struct Bad {
    wchar_t const* expression;
    char const* message;
};

constexpr Bad bad[] = {
    {L"", "column 1: expected a step"},
    {L"  ", "column 3: expected a step"},
    {L"a[", "column 3: expected a step"},
    {L"a[1", "column 4: expected ']'"},
    {L"a[b c]", "column 5: expected ']'"},
    {L"item[@id='7'", "column 13: expected ']'"},
    {L"a]", "column 2: unexpected ']'"},
    {L"a b", "column 3: unexpected 'b'"},
    {L"a)", "column 2: unexpected ')'"},
    {L"(a", "column 3: expected ')'"},
    {L"a/", "column 3: expected a step"},
    {L"a//", "column 4: expected a step"},
    {L"//", "column 3: expected a step"},
    {L"///a", "column 3: expected a step"},
    {L"a///b", "column 4: expected a step"},
    {L"a|", "column 3: expected a step"},
    {L"|a", "column 1: expected a step"},
    {L"a[]", "column 3: expected a step"},
    {L"a[='x']", "column 3: expected a step"},
    {L"a['x]", "column 3: the literal is not closed"},
    {L"a[\"x]", "column 3: the literal is not closed"},
    {L"@", "column 2: expected a step"},
    {L"@@a", "column 2: expected a step"},
    {L"@a::b", "column 2: expected a step"},
    {L"a#b", "column 2: unexpected '#'"},
    {L"a!", "column 2: unexpected '!'"},
    {L"a:", "column 2: unexpected ':'"},
    {L"a: b", "column 2: unexpected ':'"},
    {L":a", "column 1: unexpected ':'"},
    {L"a&b", "column 2: unexpected '&'"},
    {L"\u00d7", "column 1: unexpected '\xC3\x97'"},
    {L"a::b", "column 1: unknown axis 'a'"},
    {L"x/elder::b", "column 3: unknown axis 'elder'"},
    {L"child::", "column 8: expected a step"},
    {L"q:a", "column 1: the prefix 'q' is not declared"},
    {L"a/q:*", "column 3: the prefix 'q' is not declared"},
    {L"@q:a", "column 2: the prefix 'q' is not declared"},
    {L"xmlns:a", "column 1: the prefix 'xmlns' is not declared"},
    {L"$a", "column 1: there are no variables"},
    {L"a[$b]", "column 3: there are no variables"},
    {L"document('x')", "column 1: unknown function 'document'"},
    {L"current()", "column 1: unknown function 'current'"},
    {L"key('a', 'b')", "column 1: unknown function 'key'"},
    {L"a[ends-with(b, 'c')]", "column 3: unknown function 'ends-with'"},
    {L"p:f()", "column 1: unknown function 'p:f'"},
    {L"a/count(b)", "column 3: a function call is not a step"},
    {L"a/id('x')", "column 3: a function call is not a step"},
    {L"1", "column 1: the expression gives a number, not nodes"},
    {L"'a'", "column 1: the expression gives a string, not nodes"},
    {L"a = b", "column 1: the expression gives a boolean, not nodes"},
    {L" a and b", "column 2: the expression gives a boolean, not nodes"},
    {L"count(a)", "column 1: the expression gives a number, not nodes"},
    {L"string(a)", "column 1: the expression gives a string, not nodes"},
    {L"-a", "column 1: the expression gives a number, not nodes"},
    {L"a * b", "column 1: the expression gives a number, not nodes"},
    {L"a | 1", "column 5: '|' takes nodes, not a number"},
    {L"'x' | a", "column 1: '|' takes nodes, not a string"},
    {L"a | true()", "column 5: '|' takes nodes, not a boolean"},
    {L"'a'[1]", "column 1: a path starts at nodes, not at a string"},
    {L"(1)/a", "column 1: a path starts at nodes, not at a number"},
    {L"string()//a", "column 1: a path starts at nodes, not at a string"},
    {L"a[count()]", "column 3: count() takes 1 argument"},
    {L"a[count(b, c)]", "column 3: count() takes 1 argument"},
    {L"a[count(1)]", "column 3: count() takes nodes, not a number"},
    {L"a[sum('x')]", "column 3: sum() takes nodes, not a string"},
    {L"a[name('x')]", "column 3: name() takes nodes, not a string"},
    {L"a[local-name(true())]", "column 3: local-name() takes nodes, not a boolean"},
    {L"a[namespace-uri(1)]", "column 3: namespace-uri() takes nodes, not a number"},
    {L"a[last(1)]", "column 3: last() takes no arguments"},
    {L"a[position(.)]", "column 3: position() takes no arguments"},
    {L"a[true(1)]", "column 3: true() takes no arguments"},
    {L"a[concat('x')]", "column 3: concat() takes at least 2 arguments"},
    {L"a[contains('x')]", "column 3: contains() takes 2 arguments"},
    {L"a[starts-with('x', 'y', 'z')]", "column 3: starts-with() takes 2 arguments"},
    {L"a[substring('x')]", "column 3: substring() takes 2 to 3 arguments"},
    {L"a[substring('x', 1, 2, 3)]", "column 3: substring() takes 2 to 3 arguments"},
    {L"a[translate('x', 'y')]", "column 3: translate() takes 3 arguments"},
    {L"a[string(1, 2)]", "column 3: string() takes at most 1 argument"},
    {L"a[number(1, 2)]", "column 3: number() takes at most 1 argument"},
    {L"a[normalize-space(1, 2)]", "column 3: normalize-space() takes at most 1 argument"},
    {L"a[not()]", "column 3: not() takes 1 argument"},
    {L"a[boolean()]", "column 3: boolean() takes 1 argument"},
    {L"a[lang()]", "column 3: lang() takes 1 argument"},
    {L"a[id()]", "column 3: id() takes 1 argument"},
    {L"a[contains(b 'c')]", "column 14: expected ')'"},
    {L"a[contains(b,)]", "column 14: expected a step"},
    {L"a[contains(,b)]", "column 12: expected a step"},
    {L"text(1)", "column 6: expected ')'"},
    {L"comment('x')", "column 9: expected ')'"},
    {L"processing-instruction(x)", "column 24: expected ')'"},
    {L".[1]", "column 2: unexpected '['"},
    {L"..[1]", "column 3: unexpected '['"},
    {L"1 2", "column 3: unexpected '2'"},
    {L"a[1.2.3]", "column 6: expected ']'"},
    {L"a[b ! c]", "column 5: unexpected '!'"},
    {L"a[+1]", "column 3: expected a step"},
    {L"a[1 +]", "column 6: expected a step"},
    {L"a[b and]", "column 8: expected a step"},
    {L"*a", "column 2: unexpected 'a'"},
    {L"**", "column 3: expected a step"},
};

} // namespace

TEST(Grammar, acceptsExpressions) {
    for (wchar_t const* expression : good)
        EXPECT_NO_THROW(compile(expression, namespaces())) << narrow(expression);
}

TEST(Grammar, tellsWhatIsWrongAndWhere) {
    for (Bad const& row : bad) {
        try {
            compile(row.expression, namespaces());
            ADD_FAILURE() << "accepted: " << narrow(row.expression);
        } catch (QueryError const& error) {
            EXPECT_STREQ(error.what(), row.message) << narrow(row.expression);
        }
    }
}

TEST(Grammar, refusesWhatIsNoCharacter) {
    std::wstring text{L"a[. = '"};
    text += static_cast<wchar_t>(0xD800);
    text += L"']";
    EXPECT_THROW(compile(text, {}), QueryError);
    std::wstring bare{L"a"};
    bare += static_cast<wchar_t>(0x110000);
    EXPECT_THROW(compile(bare, {}), QueryError);
    EXPECT_THROW(compile(std::wstring_view{L"a\0b", 3}, {}), QueryError);
}

TEST(Grammar, columnIsThere) {
    try {
        compile(L"abc[", {});
        FAIL();
    } catch (QueryError const& error) {
        EXPECT_EQ(error.column(), 5U);
    }
}

} // namespace tibxml::query::test
