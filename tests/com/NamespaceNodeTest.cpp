#include <TibXml/platform/Variant.h>

#include "Objects.h"

#include <vector>

namespace tibxml::com::test {

class NamespaceNode : public testing::Test {
protected:
    Document document = documentOf(
        L"<r xmlns:p='urn:p' k='v'><e xmlns='urn:a-default-of-some-length'><f/></e></r>");
    Node r = nodeAt(document, L"/r");
    Node e = nodeAt(document, L"/r/*");
    Node p = nodeAt(e, L"namespace::p");
};

namespace {

Node textNode(IXMLDOMDocument3* document) {
    Node node;
    EXPECT_EQ(document->createNode(variantOf(LONG{NODE_TEXT}), nullptr, nullptr, node.out()), S_OK);
    return node;
}

std::string valueOf(IXMLDOMNode* node) {
    _variant_t value;
    EXPECT_EQ(as<IXMLDOMAttribute>(node)->get_value(&value), S_OK);
    return utf8(_bstr_t{value});
}

} // namespace

TEST_F(NamespaceNode, looksLikeAnAttribute) {
    DOMNodeType type = NODE_INVALID;
    EXPECT_EQ(p->get_nodeType(&type), S_OK);
    EXPECT_EQ(type, NODE_ATTRIBUTE);
    EXPECT_EQ(nameOf(p), "xmlns:p");
    EXPECT_EQ(textOf(p), "urn:p");
    EXPECT_EQ(valueOf(p), "urn:p");
    EXPECT_EQ(xmlOf(p), "xmlns:p=\"urn:p\"");
    Node const other = nodeAt(e, L"namespace::*[name() = '']");
    EXPECT_EQ(nameOf(other), "xmlns");
    EXPECT_EQ(textOf(other), "urn:a-default-of-some-length");
    EXPECT_EQ(nameOf(nodeAt(e, L"namespace::xml")), "xmlns:xml");
    Node none;
    EXPECT_EQ(p->get_parentNode(none.out()), S_FALSE);
    EXPECT_EQ(p->selectSingleNode(_bstr_t{L"*"}, none.out()), S_FALSE);
    Map map;
    EXPECT_EQ(p->get_attributes(map.out()), S_FALSE);
    List children;
    EXPECT_EQ(p->get_childNodes(children.out()), S_OK);
    EXPECT_EQ(lengthOf(children.get()), 0);
    Ptr<IXMLDOMDocument> owner;
    EXPECT_EQ(p->get_ownerDocument(owner.out()), S_OK);
    EXPECT_TRUE(isSame(owner, document));
}

TEST_F(NamespaceNode, leadsToItsElement) {
    EXPECT_TRUE(isSame(nodeAt(p, L".."), e));
    EXPECT_TRUE(isSame(nodeAt(p, L"parent::node()"), e));
    EXPECT_TRUE(isSame(nodeAt(e, L"namespace::p/.."), e));
    EXPECT_TRUE(isSame(nodeAt(p, L"ancestor::r"), r));
    EXPECT_TRUE(isSame(nodeAt(p, L"."), p));
    EXPECT_TRUE(isSame(nodeAt(p, L"../namespace::p[../@* or ..]"), p));
}

TEST_F(NamespaceNode, isInNoOtherList) {
    EXPECT_EQ(lengthOf(attributesOf(e).get()), 1);
    Node const declared = itemOf(attributesOf(e).get(), 0);
    EXPECT_FALSE(isSame(declared, nodeAt(e, L"namespace::*[1]")));
    EXPECT_EQ(lengthOf(nodesAt(r, L"@*").get()), 1);
    EXPECT_EQ(
        xmlOf(document),
        "<r xmlns:p=\"urn:p\" k=\"v\"><e xmlns=\"urn:a-default-of-some-length\"><f/></e></r>\n");
}

TEST_F(NamespaceNode, isOneObjectWhileHeld) {
    EXPECT_EQ(nodeAt(e, L"namespace::p").get(), p.get());
    EXPECT_EQ(itemOf(nodesAt(document, L"//namespace::p").get(), 1).get(), p.get());
    EXPECT_FALSE(isSame(nodeAt(r, L"namespace::p"), p));
    List const list = nodesAt(e, L"namespace::*");
    ASSERT_EQ(lengthOf(list.get()), 3);
    Node const first = itemOf(list.get(), 0);
    EXPECT_EQ(itemOf(list.get(), 0).get(), first.get());
    EXPECT_EQ(nodeAt(e, L"namespace::*[1]").get(), first.get());
}

TEST_F(NamespaceNode, refusesEveryEdit) {
    std::string const before = xmlOf(document);
    Node const text = textNode(document);
    Node const child = nodeAt(e, L"*");
    Node result;
    auto const root = as<IXMLDOMElement>(r.get());
    HRESULT const results[] = {
        setText(p, L"urn:new"),
        as<IXMLDOMAttribute>(p.get())->put_value(_variant_t{L"urn:new"}),
        p->put_nodeTypedValue(_variant_t{L"urn:new"}),
        p->put_dataType(_bstr_t{L"bin.base64"}),
        p->appendChild(text, result.out()),
        p->insertBefore(text, _variant_t{}, result.out()),
        p->insertBefore(text, variantOf(child), result.out()),
        p->removeChild(child, result.out()),
        e->appendChild(p, result.out()),
        e->insertBefore(p, variantOf(child), result.out()),
        e->insertBefore(text, variantOf(p), result.out()),
        e->removeChild(p, result.out()),
        document->appendChild(p, result.out()),
        document->putref_documentElement(reinterpret_cast<IXMLDOMElement*>(p.get())),
        attributesOf(e)->setNamedItem(p, result.out()),
        attributesOf(r)->setNamedItem(p, result.out()),
    };
    for (HRESULT const& refused : results)
        EXPECT_EQ(refused, E_FAIL) << &refused - results;
    EXPECT_EQ(result.get(), nullptr);
    EXPECT_EQ(textOf(p), "urn:p");
    EXPECT_EQ(xmlOf(document), before);
    EXPECT_TRUE(isSame(nodeAt(p, L".."), e));
}

TEST_F(NamespaceNode, isRefusedByOtherDocuments) {
    Document const other = documentOf(L"<x/>");
    Node result;
    EXPECT_EQ(attributesOf(nodeAt(other, L"x"))->setNamedItem(p, result.out()), E_FAIL);
    EXPECT_EQ(nodeAt(other, L"x")->appendChild(p, result.out()), E_FAIL);
    EXPECT_EQ(xmlOf(other), "<x/>\n");
    EXPECT_EQ(nodeAt(e, L"namespace::p").get(), p.get());
}

TEST_F(NamespaceNode, isCopiedAsAnAttribute) {
    Document const other = documentOf(L"<x/>");
    Node copy;
    ASSERT_EQ(other->importNode(p, VARIANT_TRUE, copy.out()), S_OK);
    Node result;
    EXPECT_EQ(attributesOf(nodeAt(other, L"x"))->setNamedItem(copy, result.out()), S_OK);
    EXPECT_EQ(xmlOf(other), "<x xmlns:p=\"urn:p\"/>\n");
    ASSERT_EQ(p->cloneNode(VARIANT_FALSE, copy.out()), S_OK);
    EXPECT_EQ(setText(copy, L"urn:changed"), S_OK);
    EXPECT_EQ(textOf(p), "urn:p");
}

// A held object is a statement about its element that stays as it was: the prefix with another
// namespace is another one.
TEST_F(NamespaceNode, keepsItsValueWhenTheDeclarationChanges) {
    Node const declaration = nodeAt(document, L"/r");
    ASSERT_EQ(as<IXMLDOMElement>(r.get())->setAttribute(_bstr_t{L"xmlns:p"}, _variant_t{L"urn:q"}),
              S_OK);
    Node const now = nodeAt(e, L"namespace::p");
    EXPECT_EQ(textOf(now), "urn:q");
    EXPECT_EQ(textOf(p), "urn:p");
    EXPECT_FALSE(isSame(now, p));
    EXPECT_TRUE(isSame(nodeAt(p, L".."), e));
    EXPECT_EQ(lengthOf(nodesAt(p, L". | ../namespace::p").get()), 2);
    ASSERT_EQ(as<IXMLDOMElement>(r.get())->setAttribute(_bstr_t{L"xmlns:p"}, _variant_t{L"urn:p"}),
              S_OK);
    EXPECT_EQ(nodeAt(e, L"namespace::p").get(), p.get());
    Node removed;
    ASSERT_EQ(attributesOf(r)->removeNamedItem(_bstr_t{L"xmlns:p"}, removed.out()), S_OK);
    EXPECT_EQ(nodeAt(e, L"namespace::p").get(), nullptr);
    EXPECT_EQ(textOf(p), "urn:p");
}

TEST_F(NamespaceNode, followsACreatedElement) {
    Node made;
    ASSERT_EQ(document->createNode(variantOf(LONG{NODE_ELEMENT}), _bstr_t{L"q:m"},
                                   _bstr_t{L"urn:m"}, made.out()),
              S_OK);
    Node const q = nodeAt(made, L"namespace::q");
    EXPECT_EQ(textOf(q), "urn:m");
    EXPECT_EQ(lengthOf(nodesAt(made, L"namespace::*").get()), 2);
    Node result;
    ASSERT_EQ(e->appendChild(made, result.out()), S_OK);
    EXPECT_EQ(nodeAt(made, L"namespace::q").get(), q.get());
    List const inScope = nodesAt(made, L"namespace::*");
    Document const saved = documentOf(_bstr_t{[&] {
        _bstr_t xml;
        EXPECT_EQ(document->get_xml(xml.GetAddress()), S_OK);
        return xml;
    }()});
    List const reloaded = nodesAt(saved, L"//*[local-name() = 'm']/namespace::*");
    ASSERT_EQ(lengthOf(inScope.get()), lengthOf(reloaded.get()));
    for (LONG i = 0; i != lengthOf(inScope.get()); ++i)
        EXPECT_EQ(xmlOf(itemOf(inScope.get(), i)), xmlOf(itemOf(reloaded.get(), i)));
}

TEST_F(NamespaceNode, keepsItsDocumentAlive) {
    r.reset();
    e.reset();
    document.reset();
    EXPECT_EQ(textOf(p), "urn:p");
    EXPECT_EQ(nameOf(nodeAt(p, L"..")), "e");
    EXPECT_EQ(lengthOf(nodesAt(p, L"//*").get()), 3);
}

TEST_F(NamespaceNode, keepsARemovedElement) {
    Node removed;
    ASSERT_EQ(r->removeChild(e, removed.out()), S_OK);
    removed.reset();
    e.reset();
    EXPECT_EQ(textOf(p), "urn:p");
    EXPECT_EQ(nameOf(nodeAt(p, L"..")), "e");
    EXPECT_EQ(nodeAt(p, L"../namespace::p").get(), nullptr); // declared at the former parent
    Node const f = nodeAt(p, L"../*");
    p.reset();
    EXPECT_EQ(nameOf(nodeAt(f, L"..")), "e");
}

TEST_F(NamespaceNode, survivesTheReloadOfItsDocument) {
    Node const inner = nodeAt(e, L"*/namespace::*[name() = '']");
    r.reset();
    e.reset();
    ASSERT_TRUE(loadText(document, L"<other xmlns:p='urn:p'/>"));
    EXPECT_EQ(textOf(p), "urn:p");
    EXPECT_EQ(nameOf(nodeAt(p, L"..")), "e");
    EXPECT_EQ(textOf(inner), "urn:a-default-of-some-length");
    EXPECT_TRUE(isSame(nodeAt(inner, L"../.."), nodeAt(p, L"..")));
    EXPECT_FALSE(isSame(nodeAt(document, L"*/namespace::p"), p));
}

TEST_F(NamespaceNode, survivesAsTheOnlyHolderOfAPrunedTree) {
    Node const inner = nodeAt(e, L"*/namespace::p");
    p.reset();
    e.reset();
    EXPECT_EQ(setText(r, L"new"), S_OK);
    EXPECT_EQ(nameOf(nodeAt(inner, L"..")), "f");
    EXPECT_EQ(nameOf(nodeAt(inner, L"../..")), "e");
}

TEST_F(NamespaceNode, goesWithItsElementIntoAnotherDocument) {
    Node const inner = nodeAt(e, L"*/namespace::p");
    List const list = nodesAt(document, L"//namespace::p");
    ASSERT_EQ(lengthOf(list.get()), 3);
    Document const other = documentOf(L"<x xmlns:p='urn:p'/>");
    Node result;
    ASSERT_EQ(nodeAt(other, L"x")->appendChild(e, result.out()), S_OK);
    EXPECT_TRUE(isSame(nodeAt(p, L".."), e));
    EXPECT_EQ(nodeAt(e, L"namespace::p").get(), p.get());
    EXPECT_EQ(nodeAt(e, L"*/namespace::p").get(), inner.get());
    EXPECT_EQ(itemOf(list.get(), 1).get(), p.get());
    EXPECT_EQ(itemOf(list.get(), 2).get(), inner.get());
    Ptr<IXMLDOMDocument> owner;
    EXPECT_EQ(p->get_ownerDocument(owner.out()), S_OK);
    EXPECT_TRUE(isSame(owner, other));
    document.reset();
    r.reset();
    EXPECT_EQ(lengthOf(nodesAt(p, L"//namespace::p").get()), 3);
}

TEST_F(NamespaceNode, isFoundByAListAfterItsElementMoved) {
    p.reset();
    List const list = nodesAt(document, L"//namespace::*[.='urn:p']");
    ASSERT_EQ(lengthOf(list.get()), 3);
    Document const other = documentOf(L"<x/>");
    Node result;
    ASSERT_EQ(nodeAt(other, L"x")->appendChild(e, result.out()), S_OK);
    EXPECT_TRUE(isSame(nodeAt(itemOf(list.get(), 0), L".."), r));
    EXPECT_TRUE(isSame(nodeAt(itemOf(list.get(), 1), L".."), e));
    EXPECT_TRUE(isSame(nodeAt(itemOf(list.get(), 2), L"../.."), e));
}

TEST_F(NamespaceNode, staysInAListWhenItsElementIsPruned) {
    p.reset();
    List const list = nodesAt(document, L"//namespace::p");
    e.reset();
    EXPECT_EQ(setText(r, L"new"), S_OK);
    Node const inner = itemOf(list.get(), 2);
    EXPECT_EQ(nameOf(nodeAt(inner, L"..")), "f");
    EXPECT_EQ(textOf(itemOf(list.get(), 1)), "urn:p");
}

TEST_F(NamespaceNode, canBeLetGoInAnyOrder) {
    for (int order = 0; order != 6; ++order) {
        Document const fresh = documentOf(L"<r xmlns:p='urn:p'><e><f/></e></r>");
        std::vector<Node> held{nodeAt(fresh, L"r/e/namespace::p"), nodeAt(fresh, L"r/e/f"),
                               nodeAt(fresh, L"r/e/f/namespace::p")};
        List list = nodesAt(fresh, L"//namespace::*");
        EXPECT_EQ(setText(nodeAt(fresh, L"r"), L""), S_OK);
        if (order % 2 == 0) list.reset();
        for (int i = 0; i != 3; ++i)
            held[static_cast<std::size_t>((i * (1 + order % 2) + order) % 3)].reset();
        EXPECT_EQ(xmlOf(fresh), "<r xmlns:p=\"urn:p\"/>\n");
    }
}

} // namespace tibxml::com::test
