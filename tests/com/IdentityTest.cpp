#include "Objects.h"

#include <vector>

namespace tibxml::com::test {

class Identity : public testing::Test {
protected:
    Document document = documentOf(L"<a b='1'><c>x</c><d/></a>");
};

TEST_F(Identity, IsTheSameByEveryRoad) {
    Node const c = nodeAt(document, L"a/c");
    Node const a = nodeAt(document, L"a");
    List children;
    a->get_childNodes(children.out());
    Node parent;
    nodeAt(document, L"//c/text()")->get_parentNode(parent.out());
    EXPECT_TRUE(isSame(c, itemOf(children.get(), 0)));
    EXPECT_TRUE(isSame(c, itemOf(nodesAt(document, L"//*").get(), 1)));
    EXPECT_TRUE(isSame(c, parent));
    Ptr<IXMLDOMElement> root;
    document->get_documentElement(root.out());
    EXPECT_TRUE(isSame(a, root));
    EXPECT_TRUE(isSame(nodeAt(a, L"@b"), itemOf(attributesOf(a).get(), 0)));
    EXPECT_TRUE(isSame(nodeAt(a, L"/"), document));
    EXPECT_FALSE(isSame(a, c));
}

TEST_F(Identity, LastsWhileAnythingRefersToTheNode) {
    Node const one = nodeAt(document, L"//c");
    {
        Node const other = nodeAt(document, L"//c");
        EXPECT_EQ(one.get(), other.get());
    }
    Node const again = nodeAt(document, L"//c");
    EXPECT_EQ(one.get(), again.get());
}

TEST_F(Identity, LastsThroughRemovalAndReload) {
    Node const c = nodeAt(document, L"//c");
    Node const x = nodeAt(c, L"text()");
    EXPECT_EQ(setText(nodeAt(document, L"a"), L"new"), S_OK);
    EXPECT_TRUE(isSame(nodeAt(x, L".."), c));
    EXPECT_TRUE(loadText(document, L"<other/>"));
    EXPECT_TRUE(isSame(nodeAt(c, L"text()"), x));
    EXPECT_EQ(textOf(c), "x");
}

TEST_F(Identity, OfTheDocumentLastsThroughReload) {
    Node const c = nodeAt(document, L"//c");
    EXPECT_TRUE(loadText(document, L"<other/>"));
    Ptr<IXMLDOMDocument> owner;
    EXPECT_EQ(c->get_ownerDocument(owner.out()), S_OK);
    EXPECT_TRUE(isSame(owner, document));
    nodeAt(document, L"other")->get_ownerDocument(owner.out());
    EXPECT_TRUE(isSame(owner, document));
}

TEST_F(Identity, OfANodeKeepsItsDocumentAlive) {
    Node const c = nodeAt(document, L"//c");
    document.reset();
    EXPECT_EQ(textOf(nodeAt(c, L"..")), "x");
    Ptr<IXMLDOMDocument> owner;
    EXPECT_EQ(c->get_ownerDocument(owner.out()), S_OK);
    EXPECT_EQ(xmlOf(owner), "<a b=\"1\"><c>x</c><d/></a>\n");
}

TEST_F(Identity, OfOldNodesOutlastsManyReloads) {
    std::vector<Node> nodes;
    for (int i = 0; i != 20; ++i) {
        nodes.push_back(nodeAt(document, L"//*[last()]"));
        EXPECT_TRUE(loadText(document, i % 3 == 0 ? L"<bro<ken" : L"<a><b>text</b></a>") ||
                    i % 3 == 0);
    }
    for (Node const& node : nodes) {
        if (node.get() != nullptr) {
            EXPECT_NE(nameOf(node), "");
        }
    }
}

TEST_F(Identity, OfListsAndMapsKeepsTheirNodeAlive) {
    Map const map = attributesOf(nodeAt(document, L"a"));
    List children;
    nodeAt(document, L"a")->get_childNodes(children.out());
    List const nodes = nodesAt(document, L"//c");
    document.reset();
    EXPECT_EQ(nameOf(itemOf(map.get(), 0)), "b");
    EXPECT_EQ(lengthOf(children.get()), 2);
    EXPECT_EQ(textOf(itemOf(nodes.get(), 0)), "x");
}

} // namespace tibxml::com::test
