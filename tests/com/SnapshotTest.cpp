#include "Editing.h"

namespace tibxml::com::test {

// The result of a query stays what it was, whatever becomes of the nodes.
class Snapshot : public testing::Test {
protected:
    Document document =
        documentOf(L"<r><a n='1'><b>text one</b></a><a n='2'><b>text two</b></a></r>");
    Document other = documentOf(L"<o/>");
    Node r = nodeAt(document, L"r");
    Node o = nodeAt(other, L"o");
    List all = nodesAt(document, L"//b | //@n | //a | //text()");

    std::string contents() {
        std::string names;
        for (LONG i = 0; i != lengthOf(all.get()); ++i) {
            Node const node = itemOf(all.get(), i);
            names += nameOf(node) + "=" + textOf(node) + " ";
        }
        return names;
    }

    std::string const before = "a=text one n=1 b=text one #text=text one "
                               "a=text two n=2 b=text two #text=text two ";
};

TEST_F(Snapshot, OutlastsRemovals) {
    EXPECT_EQ(r->removeChild(nodeAt(r, L"a[1]"), nullptr), S_OK);
    EXPECT_EQ(r->removeChild(nodeAt(r, L"a"), nullptr), S_OK);
    EXPECT_EQ(xmlOf(document), "<r/>\n");
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(contents(), before) << "when the nodes have been asked for and let go";
    EXPECT_TRUE(isSame(parentOf(itemOf(all.get(), 2)), itemOf(all.get(), 0)));
}

TEST_F(Snapshot, OutlastsSettingText) {
    EXPECT_EQ(setText(r, L"new"), S_OK);
    EXPECT_EQ(contents(), before);
}

TEST_F(Snapshot, OutlastsRemovedAttributes) {
    EXPECT_EQ(attributesOf(nodeAt(r, L"a"))->removeNamedItem(_bstr_t{L"n"}, nullptr), S_OK);
    EXPECT_EQ(contents(), before);
}

TEST_F(Snapshot, OutlastsReloadAndItsDocument) {
    EXPECT_TRUE(loadText(document, L"<new/>"));
    EXPECT_EQ(contents(), before);
    document.reset();
    r.reset();
    EXPECT_EQ(contents(), before);
}

TEST_F(Snapshot, KeepsItsOrderWhenNodesMove) {
    EXPECT_EQ(r->insertBefore(nodeAt(r, L"a[2]"), variantOf(nodeAt(r, L"a[1]").get()), nullptr),
              S_OK);
    EXPECT_EQ(contents(), before);
    EXPECT_EQ(textOf(itemOf(nodesAt(document, L"//@n").get(), 0)), "2");
}

TEST_F(Snapshot, FollowsNodesToOtherDocuments) {
    Node const held = nodeAt(r, L"a/b");
    EXPECT_EQ(o->appendChild(nodeAt(r, L"a"), nullptr), S_OK);
    EXPECT_EQ(contents(), before);
    EXPECT_TRUE(isSame(itemOf(all.get(), 0), nodeAt(other, L"o/a")));
    EXPECT_TRUE(isSame(itemOf(all.get(), 1), nodeAt(other, L"o/a/@n")));
    EXPECT_TRUE(isSame(itemOf(all.get(), 2), held));
    EXPECT_TRUE(isSame(ownerOf(itemOf(all.get(), 3)), other));
    EXPECT_TRUE(isSame(ownerOf(itemOf(all.get(), 4)), document));
}

TEST_F(Snapshot, FollowsNodesBack) {
    EXPECT_EQ(o->appendChild(nodeAt(r, L"a"), nullptr), S_OK);
    EXPECT_EQ(r->appendChild(nodeAt(o, L"a"), nullptr), S_OK);
    EXPECT_EQ(contents(), before);
    EXPECT_TRUE(isSame(itemOf(all.get(), 0), nodeAt(r, L"a[2]")));
    EXPECT_TRUE(isSame(itemOf(all.get(), 3), nodeAt(r, L"a[2]/b/text()")));
    EXPECT_TRUE(isSame(itemOf(all.get(), 5), nodeAt(r, L"a[1]/@n")));
}

TEST_F(Snapshot, FollowsNodesToAThirdDocument) {
    Document third = documentOf(L"<third/>");
    List const inThird = nodesAt(third, L"third");
    EXPECT_EQ(o->appendChild(nodeAt(r, L"a"), nullptr), S_OK);
    List const inOther = nodesAt(other, L"//b");
    EXPECT_EQ(nodeAt(third, L"third")->appendChild(nodeAt(o, L"a/b"), nullptr), S_OK);
    EXPECT_TRUE(isSame(itemOf(inOther.get(), 0), nodeAt(third, L"third/b")));
    EXPECT_TRUE(isSame(itemOf(all.get(), 2), nodeAt(third, L"third/b")));
    EXPECT_EQ(contents(), "a= n=1 b=text one #text=text one "
                          "a=text two n=2 b=text two #text=text two ");
    third.reset();
    EXPECT_EQ(xmlOf(parentOf(itemOf(all.get(), 2))), "<third><b>text one</b></third>");
}

TEST_F(Snapshot, FollowsWhatWasRemovedFirst) {
    Node const b = nodeAt(r, L"a/b");
    EXPECT_EQ(nodeAt(r, L"a")->removeChild(b, nullptr), S_OK);
    EXPECT_EQ(o->appendChild(b, nullptr), S_OK);
    EXPECT_TRUE(isSame(itemOf(all.get(), 2), b));
    EXPECT_TRUE(isSame(parentOf(itemOf(all.get(), 3)), b));
}

TEST_F(Snapshot, FollowsAttributesToo) {
    EXPECT_EQ(attributesOf(o)->setNamedItem(nodeAt(r, L"a/@n"), nullptr), S_OK);
    EXPECT_EQ(contents(), before);
    EXPECT_TRUE(isSame(itemOf(all.get(), 1), nodeAt(other, L"o/@n")));
}

TEST_F(Snapshot, LetsNodesGoWithTheLastList) {
    List second = nodesAt(document, L"//b");
    Node b = itemOf(second.get(), 0);
    EXPECT_EQ(setText(r, L""), S_OK);
    all.reset();
    EXPECT_EQ(textOf(itemOf(second.get(), 1)), "text two");
    second.reset();
    EXPECT_EQ(textOf(b), "text one") << "held by itself";
    EXPECT_EQ(textOf(parentOf(b)), "text one");
}

TEST_F(Snapshot, OfTheDocumentIsTheDocumentAfterReload) {
    List const top = nodesAt(document, L"/");
    EXPECT_TRUE(isSame(itemOf(top.get(), 0), document));
    EXPECT_TRUE(loadText(document, L"<new/>"));
    EXPECT_TRUE(isSame(itemOf(top.get(), 0), document));
}

} // namespace tibxml::com::test
