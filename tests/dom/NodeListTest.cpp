#include "EngineTest.h"

#include <algorithm>
#include <iterator>
#include <type_traits>
#include <utility>

namespace {

using Iterator = WXmlNodeList::iterator;

static_assert(sizeof(WXmlNodeList) == sizeof(void*));
static_assert(std::random_access_iterator<Iterator>);
static_assert(std::is_nothrow_move_constructible_v<WXmlNodeList>);
static_assert(std::is_same_v<decltype(WXmlNodeList{}.size()), std::uint64_t>);
static_assert(std::is_same_v<decltype(WXmlNodeList{}.Count()), int>);

class NodeList : public testing::Test {
protected:
    WXmlDoc document = loaded(L"<r><a/><b/><c/></r>");
    WXmlNodeList nodes = document.GetNodes(L"r/*");
};

std::string namesOf(WXmlNodeList const& nodes) {
    std::string names;
    for (WXmlNode const& node : nodes)
        names += utf8(node.GetName());
    return names;
}

TEST_F(NodeList, IsEmptyAtFirst) {
    WXmlNodeList const empty;
    EXPECT_EQ(empty.size(), 0U);
    EXPECT_EQ(empty.Count(), 0);
    EXPECT_EQ(empty.begin().index, empty.end().index);
    EXPECT_TRUE(empty.begin() == empty.end());
    EXPECT_FALSE(empty.Node(0).IsValid());
    EXPECT_EQ(WXmlNodeList{WXmlNodeListPtr{}}.Count(), 0);
}

TEST_F(NodeList, CountsAndHandsOutItsNodes) {
    EXPECT_EQ(nodes.size(), 3U);
    EXPECT_EQ(nodes.Count(), 3);
    EXPECT_EQ(utf8(nodes.Node(0).GetName()), "a");
    EXPECT_EQ(utf8(nodes.Node(2).GetName()), "c");
    EXPECT_TRUE(nodes.Node(1) == nodes.Node(1));
}

TEST_F(NodeList, IndicesOutsideGiveEmptyNodes) {
    for (int const index :
         {-1, 3, 1000, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(nodes.Node(index).IsValid()) << index;
    }
    EXPECT_FALSE(nodes.Node(nodes.Count()).IsValid());
}

TEST_F(NodeList, CopiesShareTheList) {
    WXmlNodeList copy = nodes;
    EXPECT_EQ(namesOf(copy), "abc");
    copy = document.GetNodes(L"r");
    EXPECT_EQ(namesOf(copy), "r");
    EXPECT_EQ(namesOf(nodes), "abc");
    copy = nodes;
    copy = nodes;
    EXPECT_EQ(namesOf(copy), "abc");
}

TEST_F(NodeList, AssigningToItselfDoesNothing) {
    WXmlNodeList& same = nodes;
    nodes = same;
    EXPECT_EQ(namesOf(nodes), "abc");
    nodes = std::move(same);
    EXPECT_EQ(namesOf(nodes), "abc");
}

TEST_F(NodeList, MovedFromIsTheEmptyList) {
    // NOLINTBEGIN(bugprone-use-after-move): that is what is tested
    WXmlNodeList taker = std::move(nodes);
    EXPECT_EQ(namesOf(taker), "abc");
    EXPECT_EQ(nodes.size(), 0U);
    EXPECT_EQ(nodes.Count(), 0);
    EXPECT_TRUE(nodes.begin() == nodes.end());
    EXPECT_FALSE(nodes.Node(0).IsValid());
    EXPECT_EQ(WXmlNodeList{nodes}.Count(), 0);
    WXmlNodeList assigned;
    assigned = std::move(taker);
    EXPECT_EQ(namesOf(assigned), "abc");
    EXPECT_EQ(taker.Count(), 0);
    nodes = assigned;
    EXPECT_EQ(namesOf(nodes), "abc");
    // NOLINTEND(bugprone-use-after-move)
}

TEST_F(NodeList, SwapExchangesTheLists) {
    WXmlNodeList other;
    nodes.Swap(other);
    EXPECT_EQ(nodes.Count(), 0);
    EXPECT_EQ(namesOf(other), "abc");
}

TEST_F(NodeList, KeepsItsNodesWhenTheDocumentHandleIsGone) {
    WXmlNodeList const list = loaded(L"<r><a/><b/></r>").GetNodes(L"r/*");
    EXPECT_EQ(namesOf(list), "ab");
}

TEST_F(NodeList, IteratorsStandAtAnIndexOfAList) {
    EXPECT_EQ(nodes.begin().list, &nodes);
    EXPECT_EQ(nodes.begin().index, 0);
    EXPECT_EQ(nodes.end().index, 3);
    EXPECT_EQ(utf8((*nodes.begin()).GetName()), "a");
    EXPECT_FALSE((*nodes.end()).IsValid());
    WXmlNodeList const copy = nodes;
    EXPECT_FALSE(copy.begin() == nodes.begin()) << "another list object";
    EXPECT_TRUE(Iterator{} == Iterator{});
}

TEST_F(NodeList, IteratorsMove) {
    Iterator place = nodes.begin();
    EXPECT_EQ((place++).index, 0);
    EXPECT_EQ((++place).index, 2);
    EXPECT_EQ((place--).index, 2);
    EXPECT_EQ((--place).index, 0);
    EXPECT_EQ((place + 2).index, 2);
    EXPECT_EQ((2 + place).index, 2);
    EXPECT_EQ(((place += 3) -= 1).index, 2);
    EXPECT_EQ((nodes.end() - 1).index, 2);
    EXPECT_EQ(nodes.end() - nodes.begin(), 3);
    EXPECT_TRUE(nodes.begin() < nodes.end());
    EXPECT_EQ(utf8(nodes.begin()[1].GetName()), "b");
}

// An index is wider than what the list of the engine takes.
TEST_F(NodeList, IteratorsFarOutsideGiveEmptyHandles) {
    constexpr std::int64_t wrap = std::int64_t{1} << 32;
    for (std::int64_t const index :
         {std::int64_t{-1}, std::int64_t{3}, wrap, wrap + 1, -wrap, 1 - wrap,
          std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}) {
        EXPECT_FALSE((*Iterator{&nodes, index}).IsValid()) << index;
        EXPECT_FALSE(Iterator(&nodes, 0)[index].IsValid()) << index;
    }
}

TEST_F(NodeList, AlgorithmsWork) {
    EXPECT_EQ(std::distance(nodes.begin(), nodes.end()), 3);
    auto const found = std::find_if(nodes.begin(), nodes.end(),
                                    [](WXmlNode const& node) { return node.GetName() == L"b"; });
    EXPECT_EQ(found - nodes.begin(), 1);
}

class NodeListFailures : public testing::Test {
protected:
    std::shared_ptr<fake::Behaviour> behaviour = std::make_shared<fake::Behaviour>();
    fake::List* engine = nullptr;
    WXmlNodeList nodes{fake::make<fake::List, IXMLDOMNodeList>(behaviour, engine)};
};

TEST_F(NodeListFailures, EverythingThatAsksTheListRaises) {
    behaviour->codes["length"] = E_UNEXPECTED;
    behaviour->codes["item"] = E_INVALIDARG;
    EXPECT_EQ(codeOf([&] { return nodes.size(); }), E_UNEXPECTED);
    EXPECT_EQ(codeOf([&] { return nodes.Count(); }), E_UNEXPECTED);
    EXPECT_EQ(codeOf([&] { return nodes.end(); }), E_UNEXPECTED);
    EXPECT_EQ(descriptionOf([&] { return nodes.Count(); }), "no length");
    EXPECT_EQ(codeOf([&] { return nodes.Node(0); }), E_INVALIDARG);
    EXPECT_EQ(descriptionOf([&] { return nodes.Node(0); }), "no item");
    for (IID const& asked : behaviour->asked) {
        EXPECT_EQ(asked, IID_IXMLDOMNodeList);
    }
    EXPECT_EQ(behaviour->asked.size(), 6U);
}

TEST_F(NodeListFailures, TheCountFollowsTheList) {
    EXPECT_EQ(nodes.Count(), 0);
    engine->nodes.resize(2);
    EXPECT_EQ(nodes.Count(), 2);
    EXPECT_EQ(nodes.size(), 2U);
    EXPECT_EQ(nodes.end().index, 2);
    EXPECT_FALSE(nodes.Node(0).IsValid()) << "a null item is an empty node";
}

} // namespace
