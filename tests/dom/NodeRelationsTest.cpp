#include "EngineTest.h"

namespace {

// Names a private function where the language lets one, so that it can be tested by itself.
using IsAttributeNode = bool (WXmlNode::*)() const noexcept;
using Validate = bool (WXmlNode::*)(bool) const;

IsAttributeNode isAttributeNode();
Validate validate();

template <IsAttributeNode function>
struct OpenIsAttributeNode {
    friend IsAttributeNode isAttributeNode() { return function; }
};

template <Validate function>
struct OpenValidate {
    friend Validate validate() { return function; }
};

template struct OpenIsAttributeNode<&WXmlNode::IsAttributeNode>;
template struct OpenValidate<&WXmlNode::Validate>;

TEST(NodeRelations, TheParent) {
    WXmlDoc const document = loaded(L"<a><b><c/></b></a>");
    EXPECT_TRUE(nodeAt(document, L"b/c").GetParentNode() == nodeAt(document, L"b"));
    WXmlNode const top = document.GetRootNode().GetParentNode();
    EXPECT_EQ(utf8(top.GetName()), "#document");
    EXPECT_FALSE(top.GetParentNode().IsValid());
}

TEST(NodeRelations, AttributesAndDetachedNodesHaveNoParent) {
    WXmlDoc const document = loaded(L"<a b='1'/>");
    EXPECT_FALSE(nodeAt(document, L"@b").GetParentNode().IsValid());
    EXPECT_FALSE(document.CreateNode(L"x", nullptr).GetParentNode().IsValid());
    EXPECT_EQ(codeOf([] { return WXmlNode{}.GetParentNode(); }), E_POINTER);
}

TEST(NodeRelations, TheOwnerDocument) {
    WXmlDoc const document = loaded(L"<a b='1'>text</a>");
    for (wchar_t const* const path : {L".", L"@b", L"text()"}) {
        WXmlNode node = nodeAt(document, path);
        EXPECT_TRUE(node.GetOwnerDocument() == document) << utf8(path);
        EXPECT_TRUE(std::as_const(node).GetOwnerDocument() == document) << utf8(path);
    }
    EXPECT_TRUE(document.CreateNode(L"x", nullptr).GetOwnerDocument() == document);
}

TEST(NodeRelations, TheDocumentNodeHasNoOwner) {
    WXmlDoc const document = loaded(L"<a/>");
    EXPECT_TRUE(nodeAt(document, L"/").GetOwnerDocument() == WXmlDoc{});
    EXPECT_EQ(codeOf([] { return WXmlNode{}.GetOwnerDocument(); }), E_POINTER);
}

TEST(NodeRelations, TheOwnerKeepsTheDocumentAlive) {
    WXmlNode const node = loaded(L"<a><b/></a>").GetRootNode().GetNode(L"b");
    WXmlDoc const owner = node.GetOwnerDocument();
    EXPECT_EQ(utf8(owner.SaveToString()), "<a><b/></a>\n");
}

struct Children {
    wchar_t const* xml;
    bool preserveWhiteSpace;
    int count;
};

Children const children[] = {
    {L"<a/>", true, 0},
    {L"<a></a>", true, 0},
    {L"<a b='1'/>", true, 0},
    {L"<a>text</a>", true, 1},
    {L"<a> <b/> </a>", true, 3},
    {L"<a> <b/> </a>", false, 1},
    {L"<a>x<b/><!--c--><?p i?><![CDATA[d]]></a>", true, 5},
    {L"<a><b><c/></b></a>", true, 1},
};

TEST(NodeRelations, ChildrenOfWhateverKindCount) {
    for (Children const& row : children) {
        WXmlDoc document{row.preserveWhiteSpace};
        ASSERT_TRUE(document.LoadFromString(row.xml));
        EXPECT_EQ(document.GetRootNode().GetNumChildren(), row.count) << utf8(row.xml);
        EXPECT_EQ(document.GetRootNode().HasChildren(), row.count != 0) << utf8(row.xml);
    }
}

TEST(NodeRelations, WhatCannotHaveChildrenHasNone) {
    WXmlDoc const document = loaded(L"<a>text<!--c--></a>");
    EXPECT_FALSE(nodeAt(document, L"text()").HasChildren());
    EXPECT_EQ(nodeAt(document, L"comment()").GetNumChildren(), 0);
    EXPECT_EQ(WXmlNode{}.GetNumChildren(), 0);
}

TEST(NodeRelations, WhatIsAnAttribute) {
    WXmlDoc const document = loaded(L"<a b='1'>text</a>");
    EXPECT_TRUE((nodeAt(document, L"@b").*isAttributeNode())());
    EXPECT_FALSE((nodeAt(document, L".").*isAttributeNode())());
    EXPECT_FALSE((nodeAt(document, L"text()").*isAttributeNode())());
    EXPECT_FALSE((WXmlNode{}.*isAttributeNode())());
}

TEST(NodeRelations, ValidatingTellsWhetherThereWasAPlace) {
    WXmlNode node;
    EXPECT_TRUE((node.*validate())(false)) << "an empty handle has one";
    WXmlNode const taker = std::move(node);
    EXPECT_FALSE((node.*validate())(true)); // NOLINT(bugprone-use-after-move): what it is for
    EXPECT_TRUE((node.*validate())(true));
    EXPECT_TRUE(node == taker) << "both are empty now";
}

} // namespace
