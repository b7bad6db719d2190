#include <query/Namespaces.h>

#include <gtest/gtest.h>

#include <query/Query.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

struct Good {
    wchar_t const* text;
    char const* prefix;
    char const* uri; // null: the prefix is not declared
};

constexpr Good good[] = {
    {L"", "p", nullptr},
    {L" \t\r\n", "p", nullptr},
    {L"xmlns:p='urn:p'", "p", "urn:p"},
    {L"xmlns:p=\"urn:p\"", "p", "urn:p"},
    {L"  xmlns:p='urn:p'  ", "p", "urn:p"},
    {L"xmlns:p = 'urn:p'", "p", "urn:p"},
    {L"xmlns:p='a' xmlns:q='b'", "p", "a"},
    {L"xmlns:p='a' xmlns:q='b'", "q", "b"},
    {L"xmlns:p='a'\n\txmlns:q=\"b\"", "q", "b"},
    {L"xmlns:p='a\"b'", "p", "a\"b"},
    {L"xmlns:p='a'", "q", nullptr},
    {L"xmlns='urn:default'", "", nullptr},
    {L"xmlns='urn:default' xmlns:p='a'", "p", "a"},
    {L"xmlns=''", "", nullptr},
    {L"", "xml", "http://www.w3.org/XML/1998/namespace"},
    {L"xmlns:p='a'", "xml", "http://www.w3.org/XML/1998/namespace"},
    {L"xmlns:xml='http://www.w3.org/XML/1998/namespace'", "xml",
     "http://www.w3.org/XML/1998/namespace"},
    {L"xmlns:p-1.x='a'", "p-1.x", "a"},
    {L"xmlns:\u00e4='\u00e4'", "\xC3\xA4", "\xC3\xA4"},
    {L"xmlns:p='a'", "xmlns", nullptr},
};

struct Bad {
    wchar_t const* text;
    char const* message;
};

constexpr Bad bad[] = {
    {L"p='a'", "column 1: expected 'xmlns'"},
    {L"xmlns:p", "column 8: expected '='"},
    {L"xmlns:p=", "column 9: expected a quoted namespace"},
    {L"xmlns:p=a", "column 9: expected a quoted namespace"},
    {L"xmlns:p='a", "column 9: the quoted namespace is not closed"},
    {L"xmlns:p='a\"", "column 9: the quoted namespace is not closed"},
    {L"xmlns:='a'", "column 7: expected a prefix"},
    {L"xmlns:1='a'", "column 7: expected a prefix"},
    {L"xmlns:p:q='a'", "column 8: expected '='"},
    {L"xmlnsp='a'", "column 6: expected '='"},
    {L"xmlns:p='a'xmlns:q='b'", "column 12: expected white space"},
    {L"xmlns:p='a',xmlns:q='b'", "column 12: expected white space"},
    {L"xmlns:p='a' ;", "column 13: expected 'xmlns'"},
    {L"xmlns:p=''", "column 1: a prefix needs a namespace"},
    {L"xmlns:p='a' xmlns:p='a'", "column 13: declared twice"},
    {L"xmlns='a' xmlns='b'", "column 11: declared twice"},
    {L"xmlns:xmlns='a'", "column 1: the prefix 'xmlns' cannot be declared"},
    {L"xmlns:p='http://www.w3.org/2000/xmlns/'",
     "column 1: the namespace of 'xmlns' cannot be declared"},
    {L"xmlns:xml='a'", "column 1: 'xml' keeps its own namespace"},
    {L"xmlns:p='http://www.w3.org/XML/1998/namespace'", "column 1: 'xml' keeps its own namespace"},
    {L"XMLNS:p='a'", "column 1: expected 'xmlns'"},
};

} // namespace

TEST(Namespaces, bindPrefixes) {
    for (Good const& row : good) {
        Namespaces const namespaces = Namespaces::parse(row.text);
        std::string const* uri = namespaces.uriOf(row.prefix);
        ASSERT_EQ(uri != nullptr, row.uri != nullptr) << narrow(row.text);
        if (uri != nullptr) {
            EXPECT_EQ(*uri, row.uri) << narrow(row.text);
        }
    }
}

TEST(Namespaces, tellWhatIsWrongAndWhere) {
    for (Bad const& row : bad) {
        try {
            Namespaces::parse(row.text);
            ADD_FAILURE() << "accepted: " << narrow(row.text);
        } catch (QueryError const& error) {
            EXPECT_STREQ(error.what(), row.message) << narrow(row.text);
        }
    }
}

TEST(Namespaces, keepTheirText) {
    Namespaces const none;
    EXPECT_EQ(none.text(), L"");
    EXPECT_EQ(none.hash(), Namespaces{}.hash());
    Namespaces const one = Namespaces::parse(L" xmlns:p='a' ");
    EXPECT_EQ(one.text(), L" xmlns:p='a' ");
    EXPECT_NE(one.hash(), none.hash());
    EXPECT_EQ(one.hash(), Namespaces::parse(L" xmlns:p='a' ").hash());
}

TEST(Namespaces, decideWhatPrefixedNamesMean) {
    Tree const tree{"<r xmlns:a='urn:1' xmlns='urn:2'><a:x id='1'/><x id='2' a:k='v'/></r>"};
    Namespaces const namespaces = Namespaces::parse(L"xmlns:b='urn:1' xmlns:c='urn:2'");
    EXPECT_EQ(tree.describe(L"//b:x", nullptr, namespaces), "a:x#1");
    EXPECT_EQ(tree.describe(L"//c:x", nullptr, namespaces), "x#2");
    EXPECT_EQ(tree.describe(L"//c:*", nullptr, namespaces), "r x#2");
    EXPECT_EQ(tree.describe(L"//x", nullptr, namespaces), "");
    EXPECT_EQ(tree.describe(L"//@b:*", nullptr, namespaces), "@a:k=v");
    EXPECT_EQ(tree.describe(L"//@c:*", nullptr, namespaces), "");
    EXPECT_THROW(compile(L"//a:x", namespaces), QueryError);
}

TEST(Namespaces, defaultDeclarationDoesNotTouchUnprefixedNames) {
    Tree const tree{"<r xmlns='urn:2'><x/></r>"};
    EXPECT_EQ(tree.describe(L"//x", nullptr, Namespaces::parse(L"xmlns='urn:2'")), "");
}

} // namespace tibxml::query::test
