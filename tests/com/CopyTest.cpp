#include "Editing.h"

namespace tibxml::com::test {

class Copies : public testing::Test {
protected:
    static Node clone(IXMLDOMNode* node, bool deep) {
        Node copy;
        EXPECT_EQ(node->cloneNode(deep ? VARIANT_TRUE : VARIANT_FALSE, copy.out()), S_OK);
        return copy;
    }

    Node import(IXMLDOMNode* node, bool deep) {
        Node copy;
        EXPECT_EQ(target->importNode(node, deep ? VARIANT_TRUE : VARIANT_FALSE, copy.out()), S_OK);
        return copy;
    }

    Document document = documentOf(editable);
    Document target = documentOf(L"<target xmlns='urn:other' xmlns:p='urn:other'/>");
    std::string const before = xmlOf(document);
    Node r = nodeAt(document, L"r");
};

TEST_F(Copies, HaveAttributesAndWhenDeepChildren) {
    EXPECT_EQ(xmlOf(clone(r, false)), "<r xmlns:p=\"urn:p\" at=\"1\"/>");
    EXPECT_EQ(xmlOf(clone(r, true)), xmlOf(r));
    EXPECT_EQ(xmlOf(import(r, false)), "<r xmlns:p=\"urn:p\" at=\"1\"/>");
    EXPECT_EQ(xmlOf(import(r, true)), xmlOf(r));
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(Copies, OfEveryKindOfNodeLookLikeIt) {
    List const nodes = nodesAt(document, L"//node() | //@*");
    for (LONG i = 0; i != lengthOf(nodes.get()); ++i) {
        Node const original = itemOf(nodes.get(), i);
        for (Node const& copy : {clone(original, true), import(original, true)}) {
            EXPECT_EQ(xmlOf(copy), xmlOf(original));
            EXPECT_EQ(nameOf(copy), nameOf(original));
            EXPECT_FALSE(isSame(copy, original));
            EXPECT_EQ(parentOf(copy).get(), nullptr);
        }
        EXPECT_TRUE(isSame(ownerOf(clone(original, false)), document));
        EXPECT_TRUE(isSame(ownerOf(import(original, false)), target));
    }
    EXPECT_EQ(lengthOf(nodes.get()), 10);
}

TEST_F(Copies, AreIndependent) {
    Node const copy = clone(r, true);
    EXPECT_EQ(setText(nodeAt(copy, L"a/text()"), L"changed"), S_OK);
    EXPECT_EQ(setText(nodeAt(copy, L"@at"), L"2"), S_OK);
    EXPECT_EQ(copy->removeChild(nodeAt(copy, L"comment()"), nullptr), S_OK);
    EXPECT_EQ(xmlOf(document), before);
    document.reset();
    r.reset();
    EXPECT_EQ(xmlOf(copy), "<r xmlns:p=\"urn:p\" at=\"2\"><a><b/>changed</a><?pi d?>"
                           "<![CDATA[x]]></r>");
}

TEST_F(Copies, CanBeInserted) {
    EXPECT_EQ(r->appendChild(clone(nodeAt(r, L"a"), true), nullptr), S_OK);
    EXPECT_EQ(xmlOf(nodeAt(r, L"a[2]")), "<a><b/>t</a>");
    Node const root = nodeAt(target, L"*");
    EXPECT_EQ(root->appendChild(import(r, true), nullptr), S_OK);
    EXPECT_EQ(nodeAt(reloaded(target), L"//b").get() != nullptr, true) << "still in no namespace";
}

TEST_F(Copies, KeepTheNamespacesInForce) {
    Document const source =
        documentOf(L"<s xmlns='urn:s' xmlns:p='urn:p'><p:c p:x='1'><d/></p:c></s>");
    Node const c = nodeAt(source, L"*/*");
    for (Node const& copy : {clone(c, true), import(c, true)}) {
        Document const again = reloaded(copy);
        again->setProperty(_bstr_t{L"SelectionNamespaces"},
                           variantOf(_bstr_t{L"xmlns:s='urn:s' xmlns:p='urn:p'"}));
        EXPECT_NE(nodeAt(again, L"p:c[@p:x='1']/s:d").get(), nullptr) << xmlOf(copy);
    }
}

TEST_F(Copies, OfDocumentsAreDocuments) {
    document->put_preserveWhiteSpace(VARIANT_TRUE);
    Node const whole = clone(document, true);
    EXPECT_EQ(xmlOf(whole), xmlOf(document));
    EXPECT_FALSE(isSame(whole, document));
    VARIANT_BOOL preserves = VARIANT_FALSE;
    EXPECT_EQ(as<IXMLDOMDocument>(whole.get())->get_preserveWhiteSpace(&preserves), S_OK);
    EXPECT_EQ(preserves, VARIANT_TRUE);
    EXPECT_EQ(xmlOf(clone(document, false)), "");
}

TEST_F(Copies, ImportNodesOnly) {
    Node copy = r;
    IXMLDOMNode* out = copy;
    EXPECT_EQ(target->importNode(document, VARIANT_TRUE, &out), E_FAIL);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(target->importNode(nullptr, VARIANT_TRUE, &out), E_INVALIDARG);
    EXPECT_EQ(target->importNode(r, VARIANT_TRUE, nullptr), E_POINTER);
    EXPECT_EQ(r->cloneNode(VARIANT_TRUE, nullptr), E_POINTER);
}

} // namespace tibxml::com::test
