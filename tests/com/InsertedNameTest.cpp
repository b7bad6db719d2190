#include "Editing.h"

namespace tibxml::com::test {

// Which namespace a name with a prefix has is settled where the node is put.
class InsertedName : public testing::Test {
protected:
    void SetUp() override { useNamespaces(document); }

    static void useNamespaces(IXMLDOMDocument3* document) {
        EXPECT_EQ(document->setProperty(
                      _bstr_t{L"SelectionNamespaces"},
                      variantOf(_bstr_t{L"xmlns:one='urn:1' xmlns:two='urn:2' xmlns:d='urn:d'"})),
                  S_OK);
    }

    // That a path finds its node in the document and in what its markup loads to.
    void expectEverywhere(wchar_t const* path) {
        EXPECT_NE(nodeAt(document, path).get(), nullptr) << utf8(path) << xmlOf(document);
        Document const again = reloaded(document);
        useNamespaces(again);
        EXPECT_NE(nodeAt(again, path).get(), nullptr) << utf8(path) << xmlOf(document);
    }

    Document document =
        documentOf(L"<r xmlns:p='urn:1'><a xmlns:p='urn:2'/><b xmlns='urn:d'/></r>");
    Node r = nodeAt(document, L"r");
    Node a = nodeAt(document, L"r/a");
    std::string const before = xmlOf(document);
};

TEST_F(InsertedName, TakesTheNamespaceOfItsPlace) {
    EXPECT_EQ(r->appendChild(newElement(document, L"p:n"), nullptr), S_OK);
    EXPECT_EQ(a->appendChild(newElement(document, L"p:n"), nullptr), S_OK);
    expectEverywhere(L"r/one:n");
    expectEverywhere(L"r/a/two:n");
    EXPECT_EQ(xmlOf(document), "<r xmlns:p=\"urn:1\"><a xmlns:p=\"urn:2\"><p:n/></a>"
                               "<b xmlns=\"urn:d\"/><p:n/></r>\n");
}

TEST_F(InsertedName, IsRefusedWhereItsPrefixIsUndeclared) {
    Node const n = newElement(document, L"q:n");
    for (Node const& parent : {r, a}) {
        EXPECT_EQ(parent->appendChild(n, nullptr), E_FAIL);
        EXPECT_NE(takeErrorText().find("'q'"), std::string::npos);
        EXPECT_EQ(attributesOf(parent)->setNamedItem(newAttribute(document, L"q:n", L""), nullptr),
                  E_FAIL);
    }
    EXPECT_EQ(parentOf(n).get(), nullptr);
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(InsertedName, IsRefusedFromAnotherDocumentToo) {
    Document const other = documentOf(L"<o xmlns:q='urn:q'/>");
    Node const n = newElement(other, L"q:n");
    EXPECT_EQ(r->appendChild(n, nullptr), E_FAIL);
    EXPECT_TRUE(isSame(ownerOf(n), other));
    EXPECT_EQ(nodeAt(other, L"o")->appendChild(n, nullptr), S_OK);
    EXPECT_EQ(xmlOf(other), "<o xmlns:q=\"urn:q\"><q:n/></o>\n");
}

TEST_F(InsertedName, MayBeDeclaredByItsOwnElement) {
    Node const n = newElement(document, L"p:n");
    EXPECT_EQ(attributesOf(n)->setNamedItem(newAttribute(document, L"xmlns:p", L"urn:2"), nullptr),
              S_OK);
    EXPECT_EQ(r->appendChild(n, nullptr), S_OK);
    expectEverywhere(L"r/two:n");
    Node const m = newElement(document, L"q:m");
    EXPECT_EQ(attributesOf(m)->setNamedItem(newAttribute(document, L"xmlns:q", L"urn:1"), nullptr),
              S_OK);
    EXPECT_EQ(a->appendChild(m, nullptr), S_OK);
    expectEverywhere(L"r/a/one:m");
}

TEST_F(InsertedName, StaysWhatItIsWhereverItMoves) {
    Node const n = newElement(document, L"p:n");
    EXPECT_EQ(r->appendChild(n, nullptr), S_OK);
    EXPECT_EQ(a->appendChild(n, nullptr), S_OK) << "where the prefix means something else";
    expectEverywhere(L"r/a/one:n");
    Document const other = documentOf(L"<o><p xmlns='urn:d'/></o>");
    EXPECT_EQ(nodeAt(other, L"o/*")->appendChild(n, nullptr), S_OK);
    document = other;
    useNamespaces(other);
    expectEverywhere(L"o/d:p/one:n");
}

TEST_F(InsertedName, WithoutPrefixHasNoNamespace) {
    Node const b = nodeAt(document, L"r/d:b");
    EXPECT_EQ(b->appendChild(newElement(document, L"n"), nullptr), S_OK);
    expectEverywhere(L"r/d:b/n");
    EXPECT_EQ(xmlOf(b), "<b xmlns=\"urn:d\"><n xmlns=\"\"/></b>");
    EXPECT_EQ(b->appendChild(newElement(document, L"n", L"urn:d"), nullptr), S_OK);
    expectEverywhere(L"r/d:b/d:n");
}

TEST_F(InsertedName, MayBringItsNamespace) {
    EXPECT_EQ(r->appendChild(newElement(document, L"q:n", L"urn:2"), nullptr), S_OK);
    EXPECT_EQ(r->appendChild(newElement(document, L"p:m", L"urn:2"), nullptr), S_OK);
    Node const attribute = newNode(document, NODE_ATTRIBUTE, L"p:x", L"urn:2");
    EXPECT_EQ(attributesOf(r)->setNamedItem(attribute, nullptr), S_OK);
    expectEverywhere(L"r/two:n");
    expectEverywhere(L"r/two:m");
    expectEverywhere(L"r/@two:x");
}

} // namespace tibxml::com::test
