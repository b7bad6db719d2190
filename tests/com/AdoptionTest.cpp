#include "Editing.h"

namespace tibxml::com::test {

class Adoption : public testing::Test {
protected:
    Document source = documentOf(L"<s><a x='1' y='2'><b>text of some length</b></a><c/></s>");
    Document target = documentOf(L"<t k='0'><u/></t>");
    Node s = nodeAt(source, L"s");
    Node t = nodeAt(target, L"t");
};

TEST_F(Adoption, MovesASubtreeWithAllThatRefersToIt) {
    Node const a = nodeAt(s, L"a");
    Node const x = nodeAt(s, L"a/@x");
    Node const text = nodeAt(s, L"a/b/text()");
    EXPECT_EQ(t->appendChild(a, nullptr), S_OK);
    EXPECT_EQ(xmlOf(source), "<s><c/></s>\n");
    EXPECT_EQ(xmlOf(target),
              "<t k=\"0\"><u/><a x=\"1\" y=\"2\"><b>text of some length</b></a></t>\n");
    for (Node const& node : {a, x, text})
        EXPECT_TRUE(isSame(ownerOf(node), target));
    EXPECT_TRUE(isSame(nodeAt(target, L"t/a"), a));
    EXPECT_TRUE(isSame(nodeAt(target, L"t/a/@x"), x));
    EXPECT_TRUE(isSame(nodeAt(target, L"t/a/b/text()"), text));
    EXPECT_TRUE(isSame(parentOf(a), t));
}

TEST_F(Adoption, LetsTheSourceGo) {
    Node const b = nodeAt(s, L"a/b");
    EXPECT_EQ(t->insertBefore(b, variantOf(nodeAt(t, L"u").get()), nullptr), S_OK);
    s.reset();
    source.reset();
    EXPECT_EQ(xmlOf(target), "<t k=\"0\"><b>text of some length</b><u/></t>\n");
    target.reset();
    t.reset();
    EXPECT_EQ(nameOf(parentOf(b)), "t") << "it keeps its new document";
}

TEST_F(Adoption, OfADetachedNodeMovesItToo) {
    Node const a = nodeAt(s, L"a");
    Node const b = nodeAt(a, L"b");
    EXPECT_EQ(s->removeChild(a, nullptr), S_OK);
    EXPECT_EQ(t->appendChild(b, nullptr), S_OK);
    EXPECT_EQ(xmlOf(a), "<a x=\"1\" y=\"2\"/>");
    EXPECT_TRUE(isSame(ownerOf(a), source));
    Node const loose = newElement(target, L"loose");
    EXPECT_EQ(loose->appendChild(a, nullptr), S_OK);
    EXPECT_TRUE(isSame(ownerOf(a), target));
    EXPECT_EQ(parentOf(loose).get(), nullptr);
    EXPECT_EQ(xmlOf(loose), "<loose><a x=\"1\" y=\"2\"/></loose>");
}

TEST_F(Adoption, GoesBackAndForth) {
    Node const a = nodeAt(s, L"a");
    Node const y = nodeAt(a, L"@y");
    for (int i = 0; i != 5; ++i) {
        EXPECT_EQ(t->appendChild(a, nullptr), S_OK);
        EXPECT_TRUE(isSame(nodeAt(target, L"t/a/@y"), y));
        EXPECT_EQ(s->insertBefore(a, variantOf(nodeAt(s, L"c").get()), nullptr), S_OK);
        EXPECT_TRUE(isSame(nodeAt(source, L"s/a/@y"), y));
    }
    EXPECT_EQ(xmlOf(source), "<s><a x=\"1\" y=\"2\"><b>text of some length</b></a><c/></s>\n");
}

TEST_F(Adoption, IsNotForWhatIsRefused) {
    Node const a = nodeAt(s, L"a");
    EXPECT_EQ(target->appendChild(a, nullptr), E_FAIL);
    EXPECT_EQ(t->insertBefore(a, variantOf(nodeAt(s, L"c").get()), nullptr), E_INVALIDARG);
    EXPECT_EQ(t->appendChild(source, nullptr), E_FAIL);
    EXPECT_EQ(t->removeChild(a, nullptr), E_INVALIDARG);
    EXPECT_TRUE(isSame(ownerOf(a), source));
    EXPECT_TRUE(isSame(parentOf(a), s));
    EXPECT_EQ(xmlOf(target), "<t k=\"0\"><u/></t>\n");
}

TEST_F(Adoption, KeepsLiveListsAndMapsWithTheirNode) {
    Node const a = nodeAt(s, L"a");
    List const children = childrenOf(a);
    Map const attributes = attributesOf(a);
    EXPECT_EQ(lengthOf(children.get()), 1);
    EXPECT_EQ(lengthOf(attributes.get()), 2);
    EXPECT_EQ(t->appendChild(a, nullptr), S_OK);
    EXPECT_EQ(a->appendChild(nodeAt(target, L"t/u"), nullptr), S_OK);
    EXPECT_EQ(lengthOf(children.get()), 2);
    EXPECT_EQ(nameOf(itemOf(children.get(), 1)), "u");
    EXPECT_EQ(attributes->setNamedItem(newAttribute(target, L"z", L"3"), nullptr), S_OK);
    EXPECT_EQ(textOf(itemOf(attributes.get(), 2)), "3");
    EXPECT_TRUE(isSame(ownerOf(itemOf(attributes.get(), 0)), target));
}

TEST_F(Adoption, OfAttributesMovesThem) {
    Node const x = nodeAt(s, L"a/@x");
    Node result;
    EXPECT_EQ(attributesOf(t)->setNamedItem(x, result.out()), S_OK);
    EXPECT_TRUE(isSame(result, x));
    EXPECT_TRUE(isSame(ownerOf(x), target));
    EXPECT_TRUE(isSame(nodeAt(target, L"t/@x"), x));
    EXPECT_EQ(xmlOf(target), "<t k=\"0\" x=\"1\"><u/></t>\n");
    EXPECT_EQ(nodeAt(source, L"s/a/@x").get(), nullptr);
}

TEST_F(Adoption, OfAttributesReplacesInPlace) {
    Document const other = documentOf(L"<o k='a value of some length' z='1'/>");
    Node const old = nodeAt(t, L"@k");
    EXPECT_EQ(attributesOf(t)->setNamedItem(newAttribute(target, L"l", L"5"), nullptr), S_OK);
    EXPECT_EQ(attributesOf(t)->setNamedItem(nodeAt(other, L"o/@k"), nullptr), S_OK);
    EXPECT_EQ(xmlOf(target), "<t k=\"a value of some length\" l=\"5\"><u/></t>\n");
    EXPECT_EQ(xmlOf(other), "<o z=\"1\"/>\n");
    EXPECT_EQ(textOf(old), "0");
    EXPECT_TRUE(isSame(ownerOf(old), target));
    EXPECT_EQ(attributesOf(nodeAt(other, L"o"))->setNamedItem(old, nullptr), S_OK);
    EXPECT_EQ(xmlOf(other), "<o z=\"1\" k=\"0\"/>\n");
}

TEST_F(Adoption, OfAttributesKeepsTheirNamespace) {
    Document const other = documentOf(L"<o xmlns:p='urn:p' p:k='1'/>");
    EXPECT_EQ(attributesOf(t)->setNamedItem(nodeAt(other, L"o/@*"), nullptr), S_OK);
    Document const again = reloaded(target);
    again->setProperty(_bstr_t{L"SelectionNamespaces"}, variantOf(_bstr_t{L"xmlns:n='urn:p'"}));
    EXPECT_EQ(textOf(nodeAt(again, L"t/@n:k")), "1") << xmlOf(target);
    EXPECT_EQ(attributesOf(t)->setNamedItem(newAttribute(source, L"q:k", L""), nullptr), E_FAIL);
    EXPECT_EQ(xmlOf(other), "<o xmlns:p=\"urn:p\"/>\n");
}

} // namespace tibxml::com::test
