#include <gtest/gtest.h>

#include <string>

#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/NamespaceNodes.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

constexpr char const* scopes =
    "<r id='r' xmlns:p='urn:p' xmlns:a='urn:a'>"
    "<d id='d' xmlns='urn:d' k='1'><n id='n' xmlns='' xmlns:p='urn:other'/><m id='m'/></d>"
    "<e id='e' xmlns:longer='urn:some-namespace-of-more-than-sixteen-bytes'><f id='f'/>t</e></r>";

constexpr char const* xml = "xml=http://www.w3.org/XML/1998/namespace";

struct Row {
    wchar_t const* from;
    wchar_t const* expression;
    std::string expected;
};

std::string withXml(char const* before, char const* after = "") {
    std::string text{before};
    text.append(text.empty() ? "" : " ").append(xml);
    return text.append(*after == '\0' ? "" : " ").append(after);
}

Row const rows[] = {
    // What is in scope, in the order of the prefixes.
    {L"/*", L"namespace::*", withXml("a=urn:a p=urn:p")},
    {L"/*", L"namespace::node()", withXml("a=urn:a p=urn:p")},
    {L"//*[@id='d']", L"namespace::*", withXml("=urn:d a=urn:a p=urn:p")},
    {L"//*[@id='m']", L"namespace::*", withXml("=urn:d a=urn:a p=urn:p")},
    {L"//*[@id='n']", L"namespace::*", withXml("a=urn:a p=urn:other")},
    {L"//*[@id='f']", L"namespace::*",
     withXml("a=urn:a longer=urn:some-namespace-of-more-than-sixteen-bytes p=urn:p")},
    {L"/", L"namespace::*", ""},
    {L"//@k", L"namespace::*", ""},
    {L"//text()", L"namespace::*", ""},
    {L"/*", L"namespace::*/namespace::*", ""},
    // Node tests.
    {L"/*", L"namespace::p", "p=urn:p"},
    {L"/*", L"namespace::xml", xml},
    {L"/*", L"namespace::xmlns", ""},
    {L"/*", L"namespace::q", ""},
    {L"/*", L"namespace::text()", ""},
    {L"/*", L"namespace::comment()", ""},
    {L"/*", L"namespace::xml:p", ""},
    {L"/*", L"namespace::xml:*", ""},
    {L"/*", L"namespace::*/self::*", ""},
    {L"/*", L"namespace::p/self::node()", "p=urn:p"},
    {L"/*", L"namespace::p/self::p", ""},
    {L"/*", L"namespace::p/.", "p=urn:p"},
    // They are not attributes.
    {L"/*", L"@*", "@id=r"},
    {L"/*", L"namespace::*/@*", ""},
    {L"/*", L"namespace::p/child::node()", ""},
    {L"/*", L"namespace::p/descendant-or-self::node()", "p=urn:p"},
    // Functions.
    {L"/*", L"namespace::*[name()='p']", "p=urn:p"},
    {L"/*", L"namespace::*[local-name()='p']", "p=urn:p"},
    {L"/*", L"namespace::*[namespace-uri()!='']", ""},
    {L"/*", L"namespace::*[string()='urn:p']", "p=urn:p"},
    {L"/*", L"namespace::*[.='urn:a']", "a=urn:a"},
    {L"/*", L"namespace::*[string-length()=5]", "a=urn:a p=urn:p"},
    {L"//*[@id='d']", L"namespace::*[name()='']", "=urn:d"},
    {L"//*[@id='d']", L"namespace::*[not(name())]", "=urn:d"},
    {L"/", L"//*[count(namespace::*)=3]", "r#r n#n"},
    {L"/", L"//*[namespace::p='urn:other']", "n#n"},
    {L"/", L"//*[namespace::longer]/@id", "@id=e @id=f"},
    {L"/", L"//*[namespace::*=@id]", ""},
    // Positions.
    {L"/*", L"namespace::*[1]", "a=urn:a"},
    {L"/*", L"namespace::*[2]", "p=urn:p"},
    {L"/*", L"namespace::*[last()]", xml},
    {L"/*", L"namespace::*[position()>1]", withXml("p=urn:p")},
    {L"/*", L"namespace::*[4]", ""},
    {L"/*", L"namespace::*[@k='v']", ""},
    {L"/", L"(//namespace::p)[2]", "p=urn:p"},
    {L"/", L"(//namespace::p)[last()]/../@id", "@id=f"},
    // From a namespace to other nodes.
    {L"/*", L"namespace::p/..", "r#r"},
    {L"/*", L"namespace::p/parent::r", "r#r"},
    {L"/*", L"namespace::p/parent::x", ""},
    {L"/*", L"namespace::*[../@id='r'][2]", "p=urn:p"},
    {L"//*[@id='n']", L"namespace::p/ancestor::*", "r#r d#d n#n"},
    {L"//*[@id='n']", L"namespace::p/ancestor-or-self::node()[1]", "p=urn:other"},
    {L"//*[@id='n']", L"namespace::p/ancestor::*[1]", "n#n"},
    {L"//*[@id='n']", L"namespace::*/ancestor::*", "r#r d#d n#n"},
    {L"//*[@id='e']", L"namespace::p/following::node()", "f#f 't'"},
    {L"//*[@id='e']", L"namespace::*/following::*", "f#f"},
    {L"//*[@id='e']", L"namespace::p/preceding::*", "d#d n#n m#m"},
    {L"//*[@id='e']", L"namespace::*/preceding::*[1]", "m#m"},
    {L"//*[@id='e']", L"namespace::p/following-sibling::node()", ""},
    {L"//*[@id='e']", L"namespace::p/preceding-sibling::node()", ""},
    {L"/", L"//namespace::p/..", "r#r d#d n#n m#m e#e f#f"},
    {L"/*", L"namespace::p/../namespace::p", "p=urn:p"},
    {L"/*", L"namespace::p/ancestor::node()", "/ r#r"},
    {L"/*", L"namespace::p//.", "p=urn:p"},
    {L"//*[@id='f']", L"namespace::p/../../namespace::a", "a=urn:a"},
    // Order: after the element and before its attributes.
    {L"/*", L"@id | namespace::p | .", "r#r p=urn:p @id=r"},
    {L"/*", L"namespace::p | namespace::a", "a=urn:a p=urn:p"},
    {L"/*", L"namespace::p | namespace::p", "p=urn:p"},
    {L"//*[@id='d']", L"@* | namespace::a | namespace::* | * | ..",
     withXml("r#r =urn:d a=urn:a p=urn:p", "@id=d @k=1 n#n m#m")},
    {L"/", L"//*[@id='e' or @id='f']/namespace::p/../@id", "@id=e @id=f"},
    {L"//*[@id='f']", L"ancestor::*/namespace::p", "p=urn:p p=urn:p"},
    {L"//*[@id='f']", L"(ancestor-or-self::* | //namespace::p)[last()]", "p=urn:p"},
    {L"//*[@id='n']", L"ancestor-or-self::*/namespace::p", "p=urn:p p=urn:p p=urn:other"},
};

} // namespace

TEST(NamespaceAxis, answersAsTheStandardSays) {
    Tree const tree{scopes};
    for (Row const& row : rows) {
        EXPECT_EQ(tree.describe(row.expression, tree.find(row.from)), row.expected)
            << narrow(row.expression) << " from " << narrow(row.from);
    }
}

TEST(NamespaceAxis, givesOneNodePerElementAndPrefix) {
    Tree const tree{scopes};
    auto const all = tree.select(L"//namespace::*");
    EXPECT_EQ(all.size(), 3U + 4 + 3 + 4 + 4 + 4);
    EXPECT_EQ(tree.select(L"//namespace::*"), all);
    EXPECT_EQ(tree.select(L"//namespace::node() | //namespace::p"), all);
}

TEST(NamespaceAxis, worksInADetachedSubtree) {
    Tree const tree{scopes};
    tree::Node* const d = tree.find(L"//*[@id='d']");
    d->handle = &tree.document(); // a handle refers to it
    tree.document().lifetimes().remove(d);
    EXPECT_EQ(tree.describe(L"namespace::*", d), withXml("=urn:d"));
    EXPECT_EQ(tree.describe(L"//namespace::p/..", d), "n#n");
    d->handle = nullptr;
    tree.document().lifetimes().handleReleased(d);
}

TEST(NamespaceAxis, tellsWhatAWrittenDocumentDeclares) {
    Tree const tree{"<r xmlns:p='urn:p'><e/></r>"};
    tree::Document& document = tree.document();
    auto& names = document.names();
    tree::Node* const e = tree.find(L"//e");
    tree::Node* const child = tree::newElement(document, names.intern("q", "x", "urn:q"));
    tree::appendChild(document, e, child);
    tree::appendAttribute(document, child,
                          tree::newAttribute(document, names.intern("p", "k", "urn:else"), "v"));
    tree::Node* const plain = tree::newElement(document, names.intern("", "y", "urn:y"));
    tree::appendChild(document, child, plain);
    EXPECT_EQ(tree.describe(L"namespace::*", e), withXml("p=urn:p"));
    EXPECT_EQ(tree.describe(L"namespace::*", child), withXml("p=urn:else q=urn:q"));
    EXPECT_EQ(tree.describe(L"namespace::*", plain), withXml("=urn:y p=urn:else q=urn:q"));
}

TEST(NamespaceAxis, isNoEdit) {
    Tree const tree{scopes};
    auto const version = tree.document().version();
    EXPECT_EQ(tree.select(L"//namespace::*").size(), 22U);
    EXPECT_EQ(tree.document().version(), version);
}

TEST(NamespaceAxis, leavesNothingBehind) {
    Tree const tree{scopes};
    tree::Document& document = tree.document();
    EXPECT_FALSE(document.hasNamespaceNodes());
    auto const search = [&] {
        EXPECT_NE(selectFirst(*compile(L"//*[namespace::longer][namespace::*[3]]/namespace::p", {}),
                              document, tree.node()),
                  nullptr);
    };
    search();
    std::size_t const before = document.arena().footprint();
    for (int i = 0; i < 10000; ++i)
        search();
    EXPECT_EQ(document.arena().footprint(), before);
}

TEST(NamespaceAxis, isEmptiedWhenTheLastPinGoes) {
    Tree const tree{scopes};
    tree::Document& document = tree.document();
    std::size_t footprint = 0;
    for (int i = 0; i < 1000; ++i) {
        document.lifetimes().pin();
        auto const nodes = tree.select(L"//namespace::*");
        EXPECT_EQ(selectFirst(*compile(L"/*/namespace::p", {}), document, tree.node()), nodes[1]);
        EXPECT_EQ(tree::NamespaceNodes::firstOf(document, tree.element()), nodes[0]);
        document.lifetimes().unpin();
        EXPECT_EQ(tree::NamespaceNodes::firstOf(document, tree.element()), nullptr);
        if (i == 0) footprint = document.arena().footprint();
    }
    EXPECT_EQ(document.arena().footprint(), footprint);
}

} // namespace tibxml::query::test
