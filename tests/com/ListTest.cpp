#include "Objects.h"

#include <limits>

namespace tibxml::com::test {

class Lists : public testing::Test {
protected:
    List children(IXMLDOMNode* node) {
        List list;
        EXPECT_EQ(node->get_childNodes(list.out()), S_OK);
        return list;
    }

    Document document = documentOf(L"<r><a>1</a><b>2</b><c>3</c></r>");
    Node root = nodeAt(document, L"r");
};

TEST_F(Lists, MissPastTheirEnds) {
    for (LONG const index : {LONG{-1}, LONG{3}, LONG{1000000}, std::numeric_limits<LONG>::min()}) {
        EXPECT_EQ(itemOf(children(root).get(), index).get(), nullptr) << index;
        EXPECT_EQ(itemOf(nodesAt(root, L"*").get(), index).get(), nullptr) << index;
        EXPECT_EQ(itemOf(attributesOf(root).get(), index).get(), nullptr) << index;
    }
}

TEST_F(Lists, OfChildrenGiveThemInAnyOrder) {
    List const list = children(root);
    for (LONG const index : {0, 1, 2, 1, 0, 2, 0})
        EXPECT_EQ(textOf(itemOf(list.get(), index)), std::to_string(index + 1));
}

TEST_F(Lists, OfChildrenAreLive) {
    List const list = children(root);
    EXPECT_EQ(lengthOf(list.get()), 3);
    EXPECT_EQ(nameOf(itemOf(list.get(), 2)), "c");
    EXPECT_EQ(setText(root, L"text"), S_OK);
    EXPECT_EQ(lengthOf(list.get()), 1);
    EXPECT_EQ(itemOf(list.get(), 2).get(), nullptr);
    EXPECT_EQ(nameOf(itemOf(list.get(), 0)), "#text");
    EXPECT_EQ(setText(root, L""), S_OK);
    EXPECT_EQ(lengthOf(list.get()), 0);
}

TEST_F(Lists, OfTheDocumentFollowReloads) {
    List const list = children(document);
    for (wchar_t const* const xml : {L"<a/>", L"<b/>", L"<c/>", L"<d/>", L"<e/>", L"<f/>"}) {
        EXPECT_TRUE(loadText(document, xml));
        EXPECT_EQ("<" + nameOf(itemOf(list.get(), 0)) + "/>", utf8(xml));
        EXPECT_EQ(lengthOf(list.get()), 1);
    }
    EXPECT_FALSE(loadText(document, L""));
    EXPECT_EQ(lengthOf(list.get()), 0);
}

TEST_F(Lists, OfQueriesAreSnapshots) {
    List const list = nodesAt(document, L"//*/text() | //*");
    EXPECT_EQ(lengthOf(list.get()), 7);
    EXPECT_EQ(setText(root, L""), S_OK);
    EXPECT_EQ(lengthOf(list.get()), 7);
    EXPECT_EQ(nameOf(itemOf(list.get(), 1)), "a");
    EXPECT_EQ(textOf(itemOf(list.get(), 6)), "3");
    Node parent;
    EXPECT_EQ(itemOf(list.get(), 6)->get_parentNode(parent.out()), S_OK);
    EXPECT_TRUE(isSame(parent, itemOf(list.get(), 5)));
    EXPECT_EQ(parent->get_parentNode(Node{}.out()), S_FALSE);
}

TEST_F(Lists, OfQueriesOutlastReload) {
    List const list = nodesAt(document, L"//c");
    EXPECT_TRUE(loadText(document, L"<other/>"));
    EXPECT_EQ(textOf(itemOf(list.get(), 0)), "3");
    document.reset();
    root.reset();
    EXPECT_EQ(textOf(itemOf(list.get(), 0)), "3");
}

TEST_F(Lists, OfQueriesGiveNodesThatOutlastThem) {
    List list = nodesAt(document, L"//text()");
    setText(root, L"");
    Node const kept = itemOf(list.get(), 1);
    list.reset();
    EXPECT_EQ(textOf(kept), "2");
    EXPECT_EQ(nameOf(nodeAt(kept, L"..")), "b");
}

TEST_F(Lists, OfQueriesMayHoldEachOthersRests) {
    List const all = nodesAt(document, L"//*");
    List const some = nodesAt(document, L"//b/text()");
    setText(nodeAt(document, L"//b"), L"new");
    List const more = nodesAt(document, L"//b/text()");
    setText(root, L"");
    EXPECT_EQ(textOf(itemOf(some.get(), 0)), "2");
    EXPECT_EQ(textOf(itemOf(more.get(), 0)), "new");
    EXPECT_EQ(textOf(itemOf(all.get(), 2)), "new");
}

TEST_F(Lists, OfQueriesStayInTheDetachedTree) {
    Node const b = nodeAt(document, L"//b");
    setText(root, L"");
    EXPECT_TRUE(isSame(nodeAt(nodeAt(b, L"text()"), L"/"), b));
    EXPECT_EQ(lengthOf(nodesAt(b, L"//text()").get()), 1);
    EXPECT_EQ(lengthOf(nodesAt(b, L"//c").get()), 0);
}

} // namespace tibxml::com::test
