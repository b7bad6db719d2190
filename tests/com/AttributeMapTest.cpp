#include <TibXml/platform/Variant.h>

#include "Objects.h"

namespace tibxml::com::test {

class Attributes : public testing::Test {
protected:
    Ptr<IXMLDOMAttribute> newAttribute(wchar_t const* name, wchar_t const* value) {
        Ptr<IXMLDOMAttribute> attribute;
        EXPECT_EQ(document->createAttribute(_bstr_t{name}, attribute.out()), S_OK);
        EXPECT_EQ(setText(attribute, value), S_OK);
        return attribute;
    }

    HRESULT put(wchar_t const* name, wchar_t const* value) {
        return map->setNamedItem(newAttribute(name, value), nullptr);
    }

    Node get(wchar_t const* name) {
        Node node;
        EXPECT_GE(map->getNamedItem(_bstr_t{name}, node.out()), 0);
        return node;
    }

    Document document = documentOf(L"<r xmlns:o='urn:o'><a xmlns:p='urn:p' b='1' p:c='2' d='3'/>"
                                   L"<e b='other'/></r>");
    Node a = nodeAt(document, L"r/a");
    Map map = attributesOf(a);
    std::string const before = xmlOf(document);
};

TEST_F(Attributes, AreListedInSourceOrderWithDeclarations) {
    EXPECT_EQ(lengthOf(map.get()), 4);
    char const* const names[] = {"xmlns:p", "b", "p:c", "d"};
    for (LONG i = 0; i != 4; ++i)
        EXPECT_EQ(nameOf(itemOf(map.get(), i)), names[i]);
}

TEST_F(Attributes, AreFoundByTheNameAsWritten) {
    EXPECT_EQ(textOf(get(L"p:c")), "2");
    EXPECT_EQ(textOf(get(L"xmlns:p")), "urn:p");
    wchar_t const half[] = {static_cast<wchar_t>(0xD800), 0};
    for (wchar_t const* const name : {L"c", L"q:c", L"B", L"", L" b", L"\x01", half}) {
        Node node;
        EXPECT_EQ(map->getNamedItem(_bstr_t{name}, node.out()), S_FALSE);
        EXPECT_EQ(map->removeNamedItem(_bstr_t{name}, node.out()), S_FALSE);
    }
    EXPECT_EQ(map->getNamedItem(nullptr, Node{}.out()), S_FALSE);
}

TEST_F(Attributes, AreReplacedInPlace) {
    Node const old = get(L"b");
    Node result;
    auto const fresh = newAttribute(L"b", L"new");
    EXPECT_EQ(map->setNamedItem(fresh, result.out()), S_OK);
    EXPECT_TRUE(isSame(result, fresh));
    EXPECT_EQ(xmlOf(a), "<a xmlns:p=\"urn:p\" b=\"new\" p:c=\"2\" d=\"3\"/>");
    EXPECT_EQ(textOf(old), "1") << "a replaced attribute stays usable";
    EXPECT_EQ(map->setNamedItem(old, nullptr), S_OK);
    EXPECT_EQ(textOf(get(L"b")), "1");
    EXPECT_EQ(map->setNamedItem(old, nullptr), S_OK) << "where it is already";
    EXPECT_EQ(lengthOf(map.get()), 4);
}

TEST_F(Attributes, AreAppendedWhenTheyAreNew) {
    EXPECT_EQ(put(L"z", L"<&\"\n"), S_OK);
    EXPECT_EQ(nameOf(itemOf(map.get(), 4)), "z");
    EXPECT_EQ(put(L"d", L"last"), S_OK);
    EXPECT_EQ(textOf(itemOf(map.get(), 3)), "last");
}

TEST_F(Attributes, TakeTheNamespaceOfTheirPrefix) {
    EXPECT_EQ(put(L"p:x", L"1"), S_OK);
    EXPECT_EQ(put(L"o:x", L"2"), S_OK);
    document->setProperty(_bstr_t{L"SelectionNamespaces"},
                          variantOf(_bstr_t{L"xmlns:n='urn:p' xmlns:m='urn:o'"}));
    EXPECT_EQ(textOf(nodeAt(a, L"@n:x")), "1");
    EXPECT_EQ(textOf(nodeAt(a, L"@m:x")), "2");
    EXPECT_EQ(put(L"undeclared:x", L"3"), E_FAIL);
    EXPECT_NE(takeErrorText().find("undeclared"), std::string::npos);
    EXPECT_EQ(lengthOf(map.get()), 6);
}

TEST_F(Attributes, MayNotContradictNames) {
    EXPECT_EQ(put(L"xmlns:p", L"urn:other"), E_FAIL);
    EXPECT_EQ(put(L"xmlns", L"urn:default"), E_FAIL);
    EXPECT_EQ(put(L"xmlns:q", L""), E_FAIL);
    EXPECT_EQ(put(L"xmlns:xml", L"urn:x"), E_FAIL);
    EXPECT_EQ(put(L"xmlns:xmlns", L"urn:x"), E_FAIL);
    EXPECT_EQ(put(L"xmlns:q", L"http://www.w3.org/2000/xmlns/"), E_FAIL);
    EXPECT_EQ(xmlOf(document), before);
    EXPECT_EQ(put(L"xmlns:q", L"urn:q"), S_OK);
    EXPECT_EQ(put(L"xmlns:p", L"urn:p"), S_OK);
    EXPECT_EQ(setText(get(L"xmlns:p"), L"urn:other"), E_FAIL);
    EXPECT_EQ(setText(get(L"xmlns:q"), L"urn:other"), S_OK);
    EXPECT_EQ(setText(get(L"xmlns:q"), L""), E_FAIL);
}

TEST_F(Attributes, HaveOneExpandedNameOnce) {
    EXPECT_EQ(put(L"xmlns:q", L"urn:p"), S_OK);
    EXPECT_EQ(put(L"q:c", L"again"), E_FAIL);
    EXPECT_EQ(textOf(get(L"p:c")), "2");
}

TEST_F(Attributes, MoveFromOtherElements) {
    Node const other = nodeAt(document, L"//e/@b");
    EXPECT_EQ(map->setNamedItem(other, nullptr), S_OK);
    EXPECT_EQ(xmlOf(nodeAt(document, L"//e")), "<e/>");
    EXPECT_EQ(textOf(get(L"b")), "other");
    EXPECT_TRUE(isSame(get(L"b"), other));
    EXPECT_TRUE(isSame(nodeAt(other, L".."), a));
}

TEST_F(Attributes, RefuseWhatIsNone) {
    Node result = a;
    IXMLDOMNode* out = result;
    EXPECT_EQ(map->setNamedItem(nullptr, &out), E_INVALIDARG);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(map->setNamedItem(nodeAt(document, L"//e"), nullptr), E_FAIL);
    EXPECT_EQ(map->setNamedItem(document, nullptr), E_FAIL);
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(Attributes, OutlastTheirRemoval) {
    Node removed;
    EXPECT_EQ(map->removeNamedItem(_bstr_t{L"b"}, removed.out()), S_OK);
    EXPECT_EQ(textOf(removed), "1");
    EXPECT_EQ(nodeAt(removed, L"..").get(), nullptr);
    EXPECT_EQ(map->removeNamedItem(_bstr_t{L"b"}, removed.out()), S_FALSE);
    EXPECT_EQ(map->removeNamedItem(_bstr_t{L"d"}, nullptr), S_OK);
    EXPECT_EQ(map->removeNamedItem(_bstr_t{L"xmlns:p"}, nullptr), S_OK);
    EXPECT_EQ(xmlOf(a), "<a xmlns:p=\"urn:p\" p:c=\"2\"/>") << "declared where it is needed";
}

TEST_F(Attributes, OfADetachedElementCanBeEdited) {
    setText(nodeAt(document, L"r"), L"");
    EXPECT_EQ(put(L"b", L"new"), S_OK);
    EXPECT_EQ(put(L"n", L"x"), S_OK);
    EXPECT_EQ(map->removeNamedItem(_bstr_t{L"d"}, nullptr), S_OK);
    EXPECT_EQ(xmlOf(a), "<a xmlns:p=\"urn:p\" b=\"new\" p:c=\"2\" n=\"x\"/>");
}

class SetAttribute : public Attributes {
protected:
    HRESULT set(wchar_t const* name, wchar_t const* value) {
        return as<IXMLDOMElement>(a.get())->setAttribute(_bstr_t{name}, _variant_t{value});
    }
};

TEST_F(SetAttribute, ChangesWhatIsThereInPlace) {
    Node const old = get(L"b");
    EXPECT_EQ(set(L"b", L"<new>\n"), S_OK);
    EXPECT_EQ(set(L"p:c", L""), S_OK);
    EXPECT_EQ(textOf(old), "<new>\n") << "the node is the same";
    EXPECT_EQ(xmlOf(a), "<a xmlns:p=\"urn:p\" b=\"&lt;new&gt;&#10;\" p:c=\"\" d=\"3\"/>");
}

TEST_F(SetAttribute, MakesWhatIsMissing) {
    EXPECT_EQ(set(L"d2", L"4"), S_OK);
    EXPECT_EQ(set(L"p:b", L"5"), S_OK);
    EXPECT_EQ(set(L"o:b", L"6"), S_OK);
    EXPECT_EQ(set(L"e", nullptr), S_OK); // a name that the document knows already
    EXPECT_EQ(
        xmlOf(document),
        "<r xmlns:o=\"urn:o\"><a xmlns:p=\"urn:p\" b=\"1\" p:c=\"2\" d=\"3\" d2=\"4\" p:b=\"5\" "
        "o:b=\"6\" e=\"\"/><e b=\"other\"/></r>\n");
    EXPECT_EQ(lengthOf(map.get()), 8);
}

TEST_F(SetAttribute, DeclaresNamespaces) {
    EXPECT_EQ(set(L"xmlns:q", L"urn:q"), S_OK);
    EXPECT_EQ(set(L"q:x", L"1"), S_OK);
    EXPECT_EQ(xmlOf(a),
              "<a xmlns:p=\"urn:p\" b=\"1\" p:c=\"2\" d=\"3\" xmlns:q=\"urn:q\" q:x=\"1\"/>");
}

TEST_F(SetAttribute, RefusesAndChangesNothing) {
    struct Refusal {
        wchar_t const* name;
        wchar_t const* value;
        HRESULT code;
    };

    wchar_t const half[] = {static_cast<wchar_t>(0xD800), 0};
    for (auto const& [name, value, code] : {
             Refusal{L"", L"1", E_FAIL},
             Refusal{L"1", L"1", E_FAIL},
             Refusal{L"a b", L"1", E_FAIL},
             Refusal{L":", L"1", E_FAIL},
             Refusal{half, L"1", E_FAIL},
             Refusal{L"q:undeclared", L"1", E_FAIL},
             Refusal{L"xmlns", L"urn:other", E_FAIL}, // the element itself is in none
             Refusal{L"xmlns:p", L"urn:other", E_FAIL},
             Refusal{L"xmlns:q", L"", E_FAIL},
             Refusal{L"b", L"\x01", E_INVALIDARG},
             Refusal{L"b", half, E_INVALIDARG},
             Refusal{L"fresh", L"\xFFFF", E_INVALIDARG},
         }) {
        EXPECT_EQ(set(name, value), code) << utf8(name);
        EXPECT_EQ(xmlOf(document), before) << utf8(name);
    }
    EXPECT_EQ(as<IXMLDOMElement>(a.get())->setAttribute(_bstr_t{L"b"}, _variant_t{3}),
              E_INVALIDARG);
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(SetAttribute, RefusesTheSameNameUnderAnotherPrefix) {
    Node const e = nodeAt(document, L"r/e");
    auto const element = as<IXMLDOMElement>(e.get());
    EXPECT_EQ(element->setAttribute(_bstr_t{L"xmlns:o2"}, _variant_t{L"urn:o"}), S_OK);
    EXPECT_EQ(element->setAttribute(_bstr_t{L"o:k"}, _variant_t{L"1"}), S_OK);
    EXPECT_EQ(element->setAttribute(_bstr_t{L"o2:k"}, _variant_t{L"2"}), E_FAIL);
    EXPECT_EQ(lengthOf(attributesOf(e).get()), 3);
    EXPECT_EQ(textOf(nodeAt(document, L"r/e/@*[local-name()='k']")), "1");
}

TEST_F(Attributes, OfOneElementAreOneMap) {
    EXPECT_EQ(attributesOf(a).get(), map.get());
    EXPECT_EQ(as<IXMLDOMNode>(map.get()).get(), nullptr) << "which is not the element";
    a.reset();
    EXPECT_EQ(lengthOf(map.get()), 4) << "and keeps it alive";
}

// The target of a processing instruction may look like the name of a declaration.
TEST_F(SetAttribute, TellsADeclarationFromATargetOfThatName) {
    Document const other = documentOf(L"<?xmlns x?><r xmlns='urn:r'><e xmlns='urn:e'/></r>");
    Node const e = nodeAt(other, L"*/*");
    auto const element = as<IXMLDOMElement>(e.get());
    Node declaration;
    EXPECT_EQ(attributesOf(e)->getNamedItem(_bstr_t{L"xmlns"}, declaration.out()), S_OK);
    EXPECT_EQ(textOf(declaration), "urn:e");
    EXPECT_EQ(element->setAttribute(_bstr_t{L"xmlns"}, _variant_t{L"urn:other"}), E_FAIL);
    Ptr<IXMLDOMAttribute> created;
    EXPECT_EQ(other->createAttribute(_bstr_t{L"xmlns"}, created.out()), S_OK);
    EXPECT_EQ(setText(created, L"urn:other"), S_OK);
    EXPECT_EQ(attributesOf(e)->setNamedItem(created, nullptr), E_FAIL);
    EXPECT_EQ(xmlOf(e), "<e xmlns=\"urn:e\"/>");
}

} // namespace tibxml::com::test
