#include "Editing.h"

namespace tibxml::com::test {

class Editing : public testing::Test {
protected:
    Document document = documentOf(editable);
    std::string const before = xmlOf(document);
    Node r = nodeAt(document, L"r");
    Node a = nodeAt(document, L"r/a");
};

struct Refusal {
    char const* what;
    wchar_t const* parent;
    wchar_t const* child;
    wchar_t const* reference; // null for none
    HRESULT code;
};

Refusal const refusals[] = {
    {"an attribute as child", L"r", L"r/@at", nullptr, E_FAIL},
    {"an attribute as child of its document", L"/", L"r/@at", nullptr, E_FAIL},
    {"a document as child", L"r", L"/", nullptr, E_FAIL},
    {"a document in itself", L"/", L"/", nullptr, E_FAIL},
    {"a child of a text", L"r/a/text()", L"r/comment()", nullptr, E_FAIL},
    {"a child of a CDATA section", L"r/text()", L"r/comment()", nullptr, E_FAIL},
    {"a child of a comment", L"r/comment()", L"r/a", nullptr, E_FAIL},
    {"a child of an instruction", L"r/processing-instruction()", L"r/a", nullptr, E_FAIL},
    {"a child of an attribute", L"r/@at", L"r/a/text()", nullptr, E_FAIL},
    {"a second root", L"/", L"r/a", nullptr, E_FAIL},
    {"a second root in front of the first", L"/", L"r/a", L"r", E_FAIL},
    {"text beside the root", L"/", L"r/a/text()", nullptr, E_FAIL},
    {"a CDATA section beside the root", L"/", L"r/text()", L"r", E_FAIL},
    {"a node in itself", L"r/a", L"r/a", nullptr, E_FAIL},
    {"a node in its child", L"r/a/b", L"r/a", nullptr, E_FAIL},
    {"a root in its grandchild", L"r/a/b", L"r", nullptr, E_FAIL},
    {"a reference below another node", L"r", L"r/comment()", L"r/a/b", E_INVALIDARG},
    {"an attribute as reference", L"r", L"r/comment()", L"r/@at", E_INVALIDARG},
    {"the parent as reference", L"r", L"r/comment()", L"r", E_INVALIDARG},
    {"the document as reference", L"/", L"r/comment()", L"/", E_INVALIDARG},
    {"the node itself where it is no child", L"r/a", L"r/comment()", L"r/comment()", E_INVALIDARG},
};

TEST_F(Editing, IsRefusedWithNothingChanged) {
    for (Refusal const& row : refusals) {
        Node const parent = nodeAt(document, row.parent);
        Node const child = nodeAt(document, row.child);
        Node const reference = row.reference != nullptr ? nodeAt(document, row.reference) : Node{};
        IXMLDOMNode* result = parent;
        EXPECT_EQ(parent->insertBefore(child, variantOf(reference.get()), &result), row.code)
            << row.what;
        EXPECT_EQ(result, nullptr) << row.what;
        EXPECT_EQ(xmlOf(document), before) << row.what;
        EXPECT_NE(takeErrorText(), "") << row.what;
        if (row.reference != nullptr) continue;
        EXPECT_EQ(parent->appendChild(child, nullptr), row.code) << row.what;
        EXPECT_EQ(xmlOf(document), before) << row.what;
    }
}

TEST_F(Editing, TakesNodesOnly) {
    Ptr<IXMLDOMParseError> stranger;
    ASSERT_EQ(document->get_parseError(stranger.out()), S_OK);
    Node const b = nodeAt(document, L"//b");
    EXPECT_EQ(r->appendChild(nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(r->insertBefore(nullptr, variantOf(a.get()), nullptr), E_INVALIDARG);
    EXPECT_EQ(r->insertBefore(b, variantOf(stranger.get()), nullptr), E_INVALIDARG);
    EXPECT_EQ(r->insertBefore(b, variantOf(LONG{0}), nullptr), E_INVALIDARG);
    EXPECT_EQ(r->insertBefore(b, variantOf(_bstr_t{L"a"}), nullptr), E_INVALIDARG);
    EXPECT_EQ(r->removeChild(nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(document->putref_documentElement(nullptr), E_INVALIDARG);
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(Editing, AppendsWithoutAReference) {
    VARIANT missing{};
    missing.vt = VT_ERROR;
    VARIANT null{};
    null.vt = VT_NULL;
    VARIANT noObject{};
    noObject.vt = VT_DISPATCH;
    Node const b = nodeAt(document, L"//b");
    for (VARIANT const& reference :
         {VARIANT{}, missing, null, noObject, variantOf(static_cast<IUnknown*>(nullptr))}) {
        EXPECT_EQ(a->insertBefore(b, variantOf(nodeAt(a, L"node()").get()), nullptr), S_OK);
        EXPECT_EQ(xmlOf(a), "<a><b/>t</a>");
        EXPECT_EQ(a->insertBefore(b, reference, nullptr), S_OK) << reference.vt;
        EXPECT_EQ(xmlOf(a), "<a>t<b/></a>") << reference.vt;
    }
}

TEST_F(Editing, PutsANodeInFrontOfItsReference) {
    Node const b = nodeAt(document, L"//b");
    Node result;
    EXPECT_EQ(r->insertBefore(b, variantOf(nodeAt(r, L"comment()").get()), result.out()), S_OK);
    EXPECT_TRUE(isSame(result, b));
    EXPECT_EQ(xmlOf(nodeAt(r, L"a/following-sibling::node()")), "<b/>");
    EXPECT_EQ(xmlOf(a), "<a>t</a>");
    EXPECT_EQ(r->insertBefore(b, variantOf(a.get()), nullptr), S_OK);
    EXPECT_TRUE(isSame(nodeAt(r, L"node()[1]"), b));
}

TEST_F(Editing, LeavesANodeInFrontOfItself) {
    Node result;
    EXPECT_EQ(r->insertBefore(a, variantOf(a.get()), result.out()), S_OK);
    EXPECT_TRUE(isSame(result, a));
    Node const next = nodeAt(r, L"node()[2]");
    EXPECT_EQ(r->insertBefore(a, variantOf(next.get()), nullptr), S_OK) << "where it stands";
    EXPECT_EQ(document->insertBefore(r, variantOf(r.get()), nullptr), S_OK);
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(Editing, NeverMergesTexts) {
    Node const cdata = nodeAt(r, L"text()");
    EXPECT_EQ(a->appendChild(cdata, nullptr), S_OK);
    EXPECT_EQ(a->appendChild(newText(document, L"u"), nullptr), S_OK);
    EXPECT_EQ(lengthOf(nodesAt(a, L"text()").get()), 3);
    EXPECT_EQ(xmlOf(a), "<a><b/>t<![CDATA[x]]>u</a>");
}

TEST_F(Editing, RemovesChildrenOnly) {
    Node result;
    EXPECT_EQ(r->removeChild(nodeAt(r, L"a/b"), result.out()), E_INVALIDARG);
    EXPECT_EQ(r->removeChild(nodeAt(r, L"@at"), result.out()), E_INVALIDARG);
    EXPECT_EQ(r->removeChild(r, result.out()), E_INVALIDARG);
    EXPECT_EQ(r->removeChild(document, result.out()), E_INVALIDARG);
    EXPECT_EQ(r->removeChild(newElement(document, L"n"), result.out()), E_INVALIDARG);
    EXPECT_EQ(result.get(), nullptr);
    EXPECT_EQ(xmlOf(document), before);
    EXPECT_EQ(r->removeChild(a, result.out()), S_OK);
    EXPECT_TRUE(isSame(result, a));
    EXPECT_EQ(r->removeChild(a, result.out()), E_INVALIDARG) << "it is no child any more";
}

TEST_F(Editing, KeepsRemovedNodesUsable) {
    Node const b = nodeAt(a, L"b");
    EXPECT_EQ(r->removeChild(a, nullptr), S_OK);
    EXPECT_EQ(parentOf(a).get(), nullptr);
    EXPECT_TRUE(isSame(ownerOf(a), document));
    EXPECT_EQ(xmlOf(a), "<a><b/>t</a>");
    a.reset();
    EXPECT_EQ(xmlOf(nodeAt(b, L"/")), "<a><b/>t</a>") << "one node of it is enough";
    EXPECT_EQ(b->appendChild(newElement(document, L"n"), nullptr), S_OK);
    EXPECT_EQ(r->appendChild(nodeAt(b, L"/"), nullptr), S_OK);
    EXPECT_TRUE(isSame(nodeAt(document, L"r/a/b"), b));
}

TEST_F(Editing, EmptiesTheDocumentWhenItsRootGoes) {
    EXPECT_EQ(document->removeChild(r, nullptr), S_OK);
    Ptr<IXMLDOMElement> root;
    EXPECT_EQ(document->get_documentElement(root.out()), S_FALSE);
    EXPECT_EQ(document->appendChild(a, nullptr), S_OK);
    EXPECT_EQ(document->get_documentElement(root.out()), S_OK);
    EXPECT_TRUE(isSame(root, a));
    EXPECT_EQ(document->appendChild(r, nullptr), E_FAIL);
    EXPECT_EQ(document->appendChild(a, nullptr), S_OK) << "the root itself may move";
    EXPECT_EQ(xmlOf(document), "<?xml version=\"1.0\"?>\n<!--top-->\n<?end e?>\n<a><b/>t</a>\n");
}

class XmlDeclaration : public Editing {
protected:
    Node declaration = itemOf(childrenOf(document).get(), 0);
};

TEST_F(XmlDeclaration, StaysFirst) {
    Node const comment = nodeAt(document, L"comment()");
    EXPECT_EQ(document->insertBefore(comment, variantOf(declaration.get()), nullptr), E_FAIL);
    EXPECT_EQ(document->insertBefore(r, variantOf(declaration.get()), nullptr), E_FAIL);
    EXPECT_EQ(document->appendChild(declaration, nullptr), E_FAIL);
    EXPECT_EQ(document->insertBefore(declaration, variantOf(r.get()), nullptr), E_FAIL);
    EXPECT_EQ(r->appendChild(declaration, nullptr), E_FAIL);
    EXPECT_EQ(xmlOf(document), before);
    EXPECT_EQ(document->insertBefore(declaration, variantOf(declaration.get()), nullptr), S_OK);
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(XmlDeclaration, StandsOnce) {
    Document const other = documentOf(L"<?xml version='1.0'?><o/>");
    Node const second = itemOf(childrenOf(other).get(), 0);
    EXPECT_EQ(document->insertBefore(second, variantOf(declaration.get()), nullptr), E_FAIL);
    EXPECT_EQ(document->appendChild(second, nullptr), E_FAIL);
    EXPECT_EQ(xmlOf(document), before);
    EXPECT_EQ(xmlOf(other), "<?xml version=\"1.0\"?>\n<o/>\n");
    EXPECT_TRUE(isSame(ownerOf(second), other));
}

TEST_F(XmlDeclaration, GoesAndComesBack) {
    EXPECT_EQ(document->removeChild(declaration, nullptr), S_OK);
    EXPECT_EQ(xmlOf(document), before.substr(before.find('\n') + 1));
    EXPECT_EQ(document->appendChild(declaration, nullptr), E_FAIL) << "not behind the root";
    EXPECT_EQ(r->appendChild(declaration, nullptr), E_FAIL);
    Node const first = itemOf(childrenOf(document).get(), 0);
    EXPECT_EQ(document->insertBefore(declaration, variantOf(first.get()), nullptr), S_OK);
    EXPECT_EQ(xmlOf(document), before);
}

class Root : public Editing {
protected:
    HRESULT put(IXMLDOMNode* element) {
        return document->putref_documentElement(as<IXMLDOMElement>(element));
    }
};

TEST_F(Root, IsReplacedInPlace) {
    Node const fresh = newElement(document, L"n");
    EXPECT_EQ(put(fresh), S_OK);
    EXPECT_EQ(xmlOf(document), "<?xml version=\"1.0\"?>\n<!--top-->\n<n/>\n<?end e?>\n");
    EXPECT_EQ(parentOf(r).get(), nullptr);
    EXPECT_EQ(put(r), S_OK);
    EXPECT_EQ(xmlOf(document), before);
}

TEST_F(Root, MayComeOutOfTheOldOne) {
    EXPECT_EQ(put(a), S_OK);
    EXPECT_EQ(xmlOf(document), "<?xml version=\"1.0\"?>\n<!--top-->\n<a><b/>t</a>\n<?end e?>\n");
    EXPECT_EQ(xmlOf(r), "<r xmlns:p=\"urn:p\" at=\"1\"><!--c--><?pi d?><![CDATA[x]]></r>");
    EXPECT_EQ(put(a), S_OK) << "it is the root already";
}

TEST_F(Root, MayComeFromAnotherDocument) {
    Document const other = documentOf(L"<o><i/></o>");
    Node const i = nodeAt(other, L"o/i");
    EXPECT_EQ(put(i), S_OK);
    EXPECT_TRUE(isSame(ownerOf(i), document));
    EXPECT_TRUE(isSame(parentOf(i), document));
    EXPECT_EQ(xmlOf(other), "<o/>\n");
}

TEST_F(Root, IsSetInAnEmptyDocument) {
    Document const empty = newDocument();
    EXPECT_EQ(empty->putref_documentElement(as<IXMLDOMElement>(a.get())), S_OK);
    EXPECT_EQ(xmlOf(empty), "<a><b/>t</a>\n");
}

TEST_F(Root, NeedsADeclaredPrefix) {
    EXPECT_EQ(put(newElement(document, L"p:n")), E_FAIL) << "the old root declares it, not the new";
    EXPECT_EQ(xmlOf(document), before);
}

} // namespace tibxml::com::test
