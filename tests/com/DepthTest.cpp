// No edit makes a tree that is deeper than a document that loads.
#include "Editing.h"

namespace tibxml::com::test {

namespace {

std::wstring nested(int depth, wchar_t const* innermost = L"") {
    std::wstring xml;
    for (int i = 0; i != depth; ++i)
        xml += L"<a>";
    xml += innermost;
    for (int i = 0; i != depth; ++i)
        xml += L"</a>";
    return xml;
}

Document deepDocument(int depth, wchar_t const* innermost = L"") {
    return documentOf(nested(depth, innermost).c_str());
}

Node deepest(IXMLDOMNode* context) {
    return nodeAt(context, L"descendant-or-self::a[not(a)]");
}

void expectLoads(IXMLDOMNode* node) {
    _bstr_t xml;
    ASSERT_EQ(node->get_xml(xml.GetAddress()), S_OK);
    EXPECT_TRUE(loadText(newDocument(), xml));
}

// Puts a node below a parent in every way there is.
using Edit = HRESULT (*)(IXMLDOMNode* parent, IXMLDOMNode* child);

constexpr Edit edits[] = {
    [](IXMLDOMNode* parent, IXMLDOMNode* child) { return parent->appendChild(child, nullptr); },
    [](IXMLDOMNode* parent, IXMLDOMNode* child) {
        return parent->insertBefore(child, VARIANT{}, nullptr);
    },
    [](IXMLDOMNode* parent, IXMLDOMNode* child) {
        return parent->insertBefore(child, variantOf(nodeAt(parent, L"text()").get()), nullptr);
    },
};

} // namespace

TEST(Depth, IsThatOfADocumentThatLoads) {
    EXPECT_FALSE(loadText(newDocument(), nested(257).c_str()));
    Document const document = deepDocument(255);
    Node const last = newElement(document, L"a");
    EXPECT_EQ(deepest(document)->appendChild(last, nullptr), S_OK);
    EXPECT_EQ(last->appendChild(newText(document, L"t"), nullptr), S_OK);
    EXPECT_EQ(last->appendChild(newNode(document, NODE_COMMENT, nullptr), nullptr), S_OK);
    expectLoads(document);
    std::string const before = xmlOf(document);
    EXPECT_EQ(last->appendChild(newElement(document, L"a"), nullptr), E_FAIL);
    EXPECT_NE(takeErrorText().find("deep"), std::string::npos);
    EXPECT_EQ(xmlOf(document), before);
}

// Parents in a document and in a detached tree; children from there, detached, and from elsewhere.
TEST(Depth, IsNeverExceeded) {
    for (Edit const edit : edits) {
        Document const document = documentOf(
            (L"<r>" + nested(199, L"<p>text</p>") + L"<c>" + nested(55) + L"</c></r>").c_str());
        Document const other = documentOf((L"<c>" + nested(55) + L"</c>").c_str());
        Node detached = nodeAt(document, L"r/c");
        EXPECT_EQ(nodeAt(document, L"r")->removeChild(detached, nullptr), S_OK);
        Node const clone = [&] {
            Node copy;
            EXPECT_EQ(detached->cloneNode(VARIANT_TRUE, copy.out()), S_OK);
            return copy;
        }();
        EXPECT_EQ(nodeAt(document, L"r")->appendChild(clone, nullptr), S_OK);
        Node const parents[] = {nodeAt(document, L"//p"), [&] {
                                    Node copy;
                                    Node const r = nodeAt(document, L"r");
                                    EXPECT_EQ(r->cloneNode(VARIANT_TRUE, copy.out()), S_OK);
                                    return nodeAt(copy, L"descendant::p");
                                }()};
        for (Node const& parent : parents) {
            for (Node const& child : {detached, clone, nodeAt(other, L"c")}) {
                std::string const before = xmlOf(document) + xmlOf(other) + xmlOf(parent);
                EXPECT_EQ(edit(parent, child), E_FAIL);
                EXPECT_EQ(xmlOf(document) + xmlOf(other) + xmlOf(parent), before);
            }
        }
        EXPECT_TRUE(isSame(ownerOf(nodeAt(other, L"c")), other)) << "not adopted either";
        Node const lowest = deepest(detached);
        EXPECT_EQ(parentOf(lowest)->removeChild(lowest, nullptr), S_OK);
        EXPECT_EQ(edit(parents[0], detached), S_OK) << "which is less deep now";
        expectLoads(document);
    }
}

TEST(Depth, OfANewRootIsWhatItWas) {
    Document const document = documentOf(L"<r/>");
    Document const other = documentOf((L"<r>" + nested(255) + L"</r>").c_str());
    Ptr<IXMLDOMElement> const root = as<IXMLDOMElement>(nodeAt(other, L"r").get());
    EXPECT_EQ(document->putref_documentElement(root), S_OK);
    expectLoads(document);
    EXPECT_EQ(deepest(document)->appendChild(newElement(document, L"a"), nullptr), E_FAIL);
    Ptr<IXMLDOMElement> const inner = as<IXMLDOMElement>(nodeAt(document, L"r/a").get());
    EXPECT_EQ(document->putref_documentElement(inner), S_OK);
    EXPECT_EQ(deepest(document)->appendChild(newElement(document, L"a"), nullptr), S_OK);
    EXPECT_EQ(deepest(document)->appendChild(newElement(document, L"a"), nullptr), E_FAIL);
    expectLoads(document);
}

TEST(Depth, OfATreeThatNoDocumentHoldsIsBoundToo) {
    Document const document = newDocument();
    Node const top = newElement(document, L"a");
    Node lowest = top;
    for (int i = 1; i != 256; ++i) {
        Node const next = newElement(document, L"a");
        ASSERT_EQ(lowest->appendChild(next, nullptr), S_OK) << i;
        lowest = next;
    }
    EXPECT_EQ(lowest->appendChild(newElement(document, L"a"), nullptr), E_FAIL);
    Node const above = newElement(document, L"above");
    EXPECT_EQ(above->appendChild(top, nullptr), E_FAIL);
    expectLoads(top);
    EXPECT_EQ(document->appendChild(top, nullptr), S_OK);
    expectLoads(document);
}

TEST(Depth, StaysTheSameWhenNodesChangePlaces) {
    Document const document = documentOf((L"<r><a><b/></a>" + nested(255) + L"</r>").c_str());
    Node const r = nodeAt(document, L"r");
    Node const deep = nodeAt(document, L"r/a[2]");
    for (int i = 0; i != 3; ++i)
        EXPECT_EQ(r->insertBefore(deep, variantOf(nodeAt(r, L"*[1]").get()), nullptr), S_OK);
    EXPECT_EQ(nodeAt(r, L"a[2]")->appendChild(deep, nullptr), E_FAIL);
    EXPECT_EQ(nodeAt(r, L"a[2]")->appendChild(deepest(deep), nullptr), S_OK);
    EXPECT_EQ(nodeAt(r, L"a[2]")->appendChild(deep, nullptr), S_OK);
    expectLoads(document);
}

} // namespace tibxml::com::test
