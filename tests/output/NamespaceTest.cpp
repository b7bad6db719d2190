// Names keep their meaning, whatever declarations are there.
#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "Fixture.h"

namespace tibxml::output::test {

using tree::Node;

namespace {

// What is written must mean what the tree says.
void expectWritten(Builder const& b, std::string const& text) {
    EXPECT_EQ(xml(b.document()), text);
    EXPECT_EQ(outline(*parse(xml(b.document()))->node()), outline(*b.top()));
}

TEST(Namespace, DeclaresAPrefixOnce) {
    Builder b;
    Node* const root = b.element(b.top(), "p:r", "u");
    b.element(root, "p:c", "u");
    b.attribute(b.element(root, "d"), "p:a", "1", "u");
    expectWritten(b, "<p:r xmlns:p=\"u\"><p:c/><d p:a=\"1\"/></p:r>\n");
}

TEST(Namespace, DeclaresWhereItIsNeeded) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    b.element(root, "p:c", "u");
    b.element(root, "p:c", "u");
    expectWritten(b, "<r><p:c xmlns:p=\"u\"/><p:c xmlns:p=\"u\"/></r>\n");
}

TEST(Namespace, DeclaresADefault) {
    Builder b;
    Node* const root = b.element(b.top(), "r", "u");
    b.element(root, "c", "u");
    expectWritten(b, "<r xmlns=\"u\"><c/></r>\n");
}

TEST(Namespace, TakesUnprefixedElementsOutOfADefault) {
    Builder b;
    Node* const root = b.element(b.top(), "r", "u");
    Node* const child = b.element(root, "c");
    b.element(child, "d");
    b.element(child, "e", "u");
    b.element(root, "f", "u");
    expectWritten(b, "<r xmlns=\"u\"><c xmlns=\"\"><d/><e xmlns=\"u\"/></c><f/></r>\n");
}

TEST(Namespace, LeavesUnprefixedAttributesAlone) {
    Builder b;
    Node* const root = b.element(b.top(), "r", "u");
    b.attribute(root, "a", "1");
    expectWritten(b, "<r xmlns=\"u\" a=\"1\"/>\n");
}

TEST(Namespace, RedeclaresAPrefixThatMeansSomethingElse) {
    Builder b;
    Node* const root = b.element(b.top(), "p:r", "u");
    Node* const child = b.element(root, "p:c", "v");
    b.element(child, "p:d", "u");
    b.element(root, "p:e", "u");
    expectWritten(b,
                  "<p:r xmlns:p=\"u\"><p:c xmlns:p=\"v\"><p:d xmlns:p=\"u\"/></p:c><p:e/></p:r>\n");
}

TEST(Namespace, FindsAnotherPrefixWhereOneElementNeedsTwo) {
    Builder b;
    Node* const root = b.element(b.top(), "p:r", "u");
    b.attribute(root, "p:a", "1", "v");
    b.attribute(root, "p:b", "2", "w");
    b.attribute(root, "p:c", "3", "u");
    expectWritten(b, "<p:r xmlns:p=\"u\" xmlns:ns1=\"v\" xmlns:ns2=\"w\" ns1:a=\"1\" ns2:b=\"2\" "
                     "p:c=\"3\"/>\n");
}

TEST(Namespace, LeavesPrefixesAloneThatTheSameElementUses) {
    Builder b;
    Node* const root = b.element(b.top(), "p:r", "u");
    b.attribute(b.element(root, "p:c", "u"), "p:a", "1", "v");
    Node* const d = b.element(root, "d");
    b.attribute(d, "p:a", "1", "u");
    b.attribute(d, "p:b", "2", "v");
    Node* const e = b.element(root, "e");
    b.attribute(e, "a", "1", "u");
    b.attribute(e, "p:b", "2", "v");
    expectWritten(b, "<p:r xmlns:p=\"u\"><p:c xmlns:ns1=\"v\" ns1:a=\"1\"/>"
                     "<d xmlns:ns1=\"v\" p:a=\"1\" ns1:b=\"2\"/>"
                     "<e xmlns:ns1=\"v\" p:a=\"1\" ns1:b=\"2\"/></p:r>\n");
}

TEST(Namespace, LeavesPrefixesOfAnElementWrittenByItselfAlone) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    b.attribute(root, "xmlns:p", "urn:1", tree::xmlnsNamespace);
    Node* const e = b.element(root, "e");
    b.attribute(e, "p:x", "v", "urn:2");
    b.element(e, "p:c", "urn:1");
    EXPECT_EQ(xml(b.document(), e), "<e xmlns:p=\"urn:2\" p:x=\"v\"><p:c xmlns:p=\"urn:1\"/></e>");
}

TEST(Namespace, MadePrefixesAreFree) {
    Builder b;
    Node* const root = b.element(b.top(), "ns1:r", "x");
    Node* const child = b.element(root, "p:c", "u");
    b.attribute(child, "p:a", "1", "v");
    expectWritten(b, "<ns1:r xmlns:ns1=\"x\"><p:c xmlns:p=\"u\" xmlns:ns2=\"v\" ns2:a=\"1\"/>"
                     "</ns1:r>\n");
}

TEST(Namespace, UsesAKnownPrefixWhereOneIsMissing) {
    Builder b;
    Node* const root = b.element(b.top(), "p:r", "u");
    b.attribute(root, "a", "1", "u");
    b.attribute(b.element(root, "c"), "a", "2", "v");
    expectWritten(b, "<p:r xmlns:p=\"u\" p:a=\"1\"><c xmlns:ns1=\"v\" ns1:a=\"2\"/></p:r>\n");
}

TEST(Namespace, OwnDeclarationsStayAndNamesYield) {
    Builder b;
    Node* const root = b.element(b.top(), "p:r", "u");
    b.attribute(root, "xmlns:p", "v");
    b.element(root, "p:c", "v");
    expectWritten(b, "<ns1:r xmlns:ns1=\"u\" xmlns:p=\"v\"><p:c/></ns1:r>\n");
}

TEST(Namespace, OwnDefaultStaysForAnElementOfAnotherNamespace) {
    Builder b;
    Node* const root = b.element(b.top(), "r", "u");
    b.attribute(root, "xmlns", "v");
    b.element(root, "c", "v");
    expectWritten(b, "<ns1:r xmlns:ns1=\"u\" xmlns=\"v\"><c/></ns1:r>\n");
}

TEST(Namespace, OwnDefaultYieldsToAnElementWithoutNamespace) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    b.attribute(root, "xmlns", "v");
    b.element(root, "c", "v");
    Node* const p = b.element(root, "p:d", "u");
    b.attribute(b.element(p, "e"), "xmlns", "w");
    expectWritten(b, "<r><c xmlns=\"v\"/><p:d xmlns:p=\"u\"><e/></p:d></r>\n");
}

TEST(Namespace, ForbiddenDeclarationsAreLeftOut) {
    Builder b;
    Node* const root = b.element(b.top(), "q:r", "u");
    b.attribute(root, "xmlns:p", "");
    b.attribute(root, "xmlns:xml", "other");
    b.attribute(root, "xmlns:xmlns", "other");
    b.attribute(root, "xmlns:x", tree::xmlNamespace);
    b.attribute(root, "xmlns:y", tree::xmlnsNamespace);
    b.attribute(root, "xmlns", tree::xmlNamespace);
    b.attribute(root, "xmlns:q", "u");
    expectWritten(b, "<q:r xmlns:q=\"u\"/>\n");
}

TEST(Namespace, XmlNeedsNoDeclaration) {
    Builder b;
    Node* const root = b.element(b.top(), "r");
    b.attribute(root, "xml:lang", "en", tree::xmlNamespace);
    b.attribute(root, "l:space", "default", tree::xmlNamespace);
    b.element(root, "xml:odd", tree::xmlNamespace);
    b.element(root, "l:odd", tree::xmlNamespace);
    b.element(root, "xml:other", "u");
    expectWritten(b, "<r xml:lang=\"en\" xml:space=\"default\"><xml:odd/><xml:odd/>"
                     "<ns1:other xmlns:ns1=\"u\"/></r>\n");
}

TEST(Namespace, RedundantDeclarationsKeepTheirPlace) {
    char const* const text = "<r a=\"1\" xmlns=\"u\" b=\"2\" xmlns:p=\"u\"><c xmlns=\"u\"/></r>\n";
    EXPECT_EQ(xml(parse(text)), text);
    char const* const undeclared = "<r xmlns=\"\"><c xmlns=\"\"/></r>\n";
    EXPECT_EQ(xml(parse(undeclared)), undeclared);
}

TEST(Namespace, UrisAreEscaped) {
    Builder b;
    b.element(b.top(), "r", "a&b<\"");
    expectWritten(b, "<r xmlns=\"a&amp;b&lt;&quot;\"/>\n");
}

TEST(Namespace, PrefixWithoutNamespaceIsWrittenAsItIs) {
    Builder b;
    b.attribute(b.element(b.top(), "p:r"), "q:a", "1");
    EXPECT_EQ(xml(b.document()), "<p:r q:a=\"1\"/>\n");
}

// The outline of an element as if it had no ancestors.
std::string outlineAlone(Node const& element) {
    std::string const lines = outline(element);
    std::string const lineStart{lines, 0, lines.find_first_not_of("\n ")};
    std::string result;
    for (std::size_t at = 0; at < lines.size();) {
        std::size_t const end = std::min(lines.find('\n', at + 1), lines.size());
        result.append("\n").append(lines, at + lineStart.size(), end - at - lineStart.size());
        at = end;
    }
    return result;
}

// The text of an inner element can stand alone.
struct Inner {
    char const* source;
    char const* written; // the root's first child
};

TEST(Namespace, InnerElementsDeclareWhatTheirAncestorsDid) {
    Inner const rows[] = {
        {"<r xmlns='u'><c><d/></c></r>", "<c xmlns=\"u\"><d/></c>"},
        {"<r xmlns:p='u'><c><p:d/><p:e/></c></r>", "<c xmlns:p=\"u\"><p:d/><p:e/></c>"},
        {"<r xmlns:p='u'><c><d p:a='1'/></c></r>", "<c xmlns:p=\"u\"><d p:a=\"1\"/></c>"},
        {"<r xmlns:p='u'><c/></r>", "<c/>"},
        {"<r xmlns:p='u' xmlns:q='v'><p:c><q:d/></p:c></r>",
         "<p:c xmlns:p=\"u\" xmlns:q=\"v\"><q:d/></p:c>"},
        {"<r xmlns:p='u'><c xmlns:p='v'><p:d/></c></r>", "<c xmlns:p=\"v\"><p:d/></c>"},
        {"<r xmlns:p='u'><p:c p:a='1'><d xmlns:p='v'><p:e/></d></p:c></r>",
         "<p:c xmlns:p=\"u\" p:a=\"1\"><d xmlns:p=\"v\"><p:e/></d></p:c>"},
        {"<r xmlns='u'><c xmlns=''><d/></c></r>", "<c xmlns=\"\"><d/></c>"},
        {"<r xmlns='u'><c xmlns=''><d xmlns='u'/></c></r>", "<c xmlns=\"\"><d xmlns=\"u\"/></c>"},
        {"<r xmlns='u'><p:c xmlns:p='v'><d/></p:c></r>",
         "<p:c xmlns=\"u\" xmlns:p=\"v\"><d/></p:c>"},
        {"<r xmlns:p='u'><c xmlns='u'><d/></c></r>", "<c xmlns=\"u\"><d/></c>"},
    };
    for (auto const& [source, written] : rows) {
        auto const document = parse(source);
        Node const* const inner = document->documentElement()->firstChild();
        EXPECT_EQ(xml(document, inner), written) << source;
        EXPECT_EQ(outlineAlone(*parse(written)->documentElement()), outlineAlone(*inner)) << source;
    }
}

TEST(Namespace, NearerDeclarationsOfAncestorsWin) {
    auto const document = parse("<r xmlns:p='u'><s xmlns:p='v'><t><p:c/></t></s></r>");
    Node const* const t = document->documentElement()->firstChild()->firstChild();
    EXPECT_EQ(xml(document, t), "<t xmlns:p=\"v\"><p:c/></t>");
}

TEST(Namespace, InheritedDefaultDoesNotReachElementsWithoutNamespace) {
    Builder b;
    Node* const root = b.element(b.top(), "r", "u");
    b.attribute(root, "xmlns", "u");
    Node* const plain = b.element(root, "c");
    b.element(plain, "d", "u");
    EXPECT_EQ(xml(b.document(), plain), "<c><d xmlns=\"u\"/></c>");
}

} // namespace

} // namespace tibxml::output::test
