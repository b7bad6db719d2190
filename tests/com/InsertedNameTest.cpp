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

// Attributes that are put on elements, and what becomes of their names.
class InsertedAttribute : public InsertedName {
protected:
    static Node newAttributeIn(IXMLDOMDocument* owner, wchar_t const* name, wchar_t const* uri) {
        Node const attribute = newNode(owner, NODE_ATTRIBUTE, name, uri);
        EXPECT_EQ(setText(attribute, L"v"), S_OK);
        return attribute;
    }

    // Puts it there; its name then, which must find it before and after saving.
    std::string put(IXMLDOMNode* element, IXMLDOMNode* attribute) {
        EXPECT_EQ(attributesOf(element)->setNamedItem(attribute, nullptr), S_OK);
        std::string const name = nameOf(attribute);
        _bstr_t wide;
        EXPECT_EQ(attribute->get_nodeName(wide.GetAddress()), S_OK);
        EXPECT_TRUE(isSame(itemByName(element, wide), attribute)) << name;
        Document const again = reloaded(document);
        Node const same = nodeAt(again, L"//*[@*[. = 'v']]");
        EXPECT_EQ(same != nullptr ? textOf(itemByName(same, wide)) : "", "v")
            << name << ": " << xmlOf(document);
        return name;
    }

    static Node itemByName(IXMLDOMNode* element, _bstr_t const& name) {
        Node found;
        EXPECT_GE(attributesOf(element)->getNamedItem(name, found.out()), 0);
        return found;
    }
};

struct Attributed {
    char const* what;
    wchar_t const* xml; // with an element e
    wchar_t const* name;
    wchar_t const* uri;
    char const* result;
};

constexpr Attributed attributed[] = {
    {"nobody else uses the prefix", L"<e/>", L"p:x", L"urn:2", "p:x"},
    {"an ancestor declares it otherwise", L"<r xmlns:p='urn:1'><e/></r>", L"p:x", L"urn:2", "p:x"},
    {"the element declares it so", L"<e xmlns:p='urn:2'/>", L"p:x", L"urn:2", "p:x"},
    {"the element declares it otherwise", L"<e xmlns:p='urn:1'/>", L"p:x", L"urn:2", "ns1:x"},
    {"the element's own name needs it", L"<r xmlns:p='urn:1'><p:e/></r>", L"p:x", L"urn:2",
     "ns1:x"},
    {"another attribute needs it", L"<r xmlns:p='urn:1'><e p:a=''/></r>", L"p:x", L"urn:2",
     "ns1:x"},
    {"another prefix is known", L"<r xmlns:q='urn:2'><e xmlns:p='urn:1'/></r>", L"p:x", L"urn:2",
     "q:x"},
    {"that one is hidden", L"<r xmlns:q='urn:2'><e xmlns:p='urn:1' xmlns:q='urn:3'/></r>", L"p:x",
     L"urn:2", "ns1:x"},
    {"made prefixes are taken", L"<r xmlns:ns1='urn:4'><e xmlns:p='urn:1' ns1:a=''/></r>", L"p:x",
     L"urn:2", "ns2:x"},
    {"it has none", L"<e/>", L"x", L"urn:2", "ns1:x"},
    {"it has none, and one is known", L"<r xmlns:q='urn:2'><e/></r>", L"x", L"urn:2", "q:x"},
    {"a default does not count", L"<e xmlns='urn:2'/>", L"x", L"urn:2", "ns1:x"},
    {"the one that it replaces needs it", L"<r xmlns:p='urn:1'><e p:x=''/></r>", L"p:x", L"urn:2",
     "p:x"},
    {"it is there under another prefix",
     L"<e xmlns:p='urn:1' xmlns:q='urn:3' xmlns:r='urn:2' "
     L"r:x='' p:x=''/>",
     L"p:x", L"urn:2", "r:x"},
    {"it is of XML", L"<e xmlns:p='urn:1'/>", L"xml:x", nullptr, "xml:x"},
};

TEST_F(InsertedAttribute, HasThePrefixThatItIsSavedWith) {
    for (Attributed const& row : attributed) {
        for (bool const isForeign : {false, true}) {
            document = documentOf(row.xml);
            Node const e = nodeAt(document, L"//*[local-name() = 'e']");
            Document const other = isForeign ? documentOf(L"<o/>") : document;
            Node const attribute = newAttributeIn(other, row.name, row.uri);
            EXPECT_EQ(put(e, attribute), row.result) << row.what;
        }
    }
}

TEST_F(InsertedAttribute, LeavesOthersOfItsNameAlone) {
    document = documentOf(L"<e xmlns:p='urn:1' p:x='1'/>");
    Node const e = nodeAt(document, L"e");
    EXPECT_EQ(put(e, newAttributeIn(document, L"p:x", L"urn:2")), "ns1:x");
    EXPECT_EQ(put(e, newAttributeIn(document, L"p:x", L"urn:2")), "ns1:x") << "in its place";
    EXPECT_EQ(textOf(itemByName(e, _bstr_t{L"p:x"})), "1");
    EXPECT_EQ(lengthOf(attributesOf(e).get()), 3);
    EXPECT_EQ(xmlOf(e), "<e xmlns:ns1=\"urn:2\" xmlns:p=\"urn:1\" p:x=\"1\" ns1:x=\"v\"/>");
}

// Names get their declarations when they are written: what they need is what the prefix means.
TEST_F(InsertedAttribute, MeansWhatTheNamesAroundItNeed) {
    document = documentOf(L"<r xmlns:p='urn:1'/>");
    Node const e = newElement(document, L"p:e", L"urn:2");
    EXPECT_EQ(nodeAt(document, L"r")->appendChild(e, nullptr), S_OK);
    EXPECT_EQ(as<IXMLDOMElement>(e.get())->setAttribute(_bstr_t{L"p:x"}, variantOf(_bstr_t{L"v"})),
              S_OK);
    EXPECT_EQ(textOf(itemByName(e, _bstr_t{L"p:x"})), "v");
    EXPECT_EQ(xmlOf(document), "<r xmlns:p=\"urn:1\"><p:e xmlns:p=\"urn:2\" p:x=\"v\"/></r>\n");
    EXPECT_EQ(e->appendChild(newElement(document, L"p:c"), nullptr), S_OK);
    useNamespaces(document);
    expectEverywhere(L"r/two:e[@two:x]/two:c");
}

TEST_F(InsertedAttribute, SettlesTheNameOfItsElement) {
    document = documentOf(L"<r xmlns:p='urn:1'/>");
    Node const e = newElement(document, L"p:e");
    EXPECT_EQ(attributesOf(e)->setNamedItem(newAttributeIn(document, L"p:x", L"urn:2"), nullptr),
              S_OK);
    EXPECT_EQ(nodeAt(document, L"r")->appendChild(e, nullptr), S_OK);
    useNamespaces(document);
    expectEverywhere(L"r/two:e[@two:x]");
}

TEST_F(InsertedAttribute, ForADataTypeHasAPrefixOfItsOwn) {
    document = documentOf(L"<r xmlns:q='urn:schemas-microsoft-com:datatypes'/>");
    Node const e = newElement(document, L"q:e", L"urn:1");
    EXPECT_EQ(nodeAt(document, L"r")->appendChild(e, nullptr), S_OK);
    EXPECT_EQ(e->put_dataType(_bstr_t{L"bin.base64"}), S_OK);
    EXPECT_EQ(textOf(itemByName(e, _bstr_t{L"dt:dt"})), "bin.base64");
    useNamespaces(document);
    expectEverywhere(L"r/one:e[@*[name() = 'dt:dt']]");
}

} // namespace tibxml::com::test
