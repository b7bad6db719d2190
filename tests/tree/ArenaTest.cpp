#include "Trees.h"

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

namespace tibxml::tree::test {

TEST(Arena, GivesEmptyNodesThatFillACacheLine) {
    Arena arena;
    Node const* const node = arena.newNode(NodeKind::comment);
    EXPECT_EQ(node->kind, NodeKind::comment);
    EXPECT_EQ(node->previous, node);
    EXPECT_EQ(node->next, nullptr);
    EXPECT_EQ(node->text(), "");
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(node) % sizeof(Node), 0U);
}

TEST(Arena, GivesAFreedNodeAgain) {
    Arena arena;
    Node* const node = arena.newNode(NodeKind::element);
    node->flags = breakAfter;
    arena.freeNode(node);
    Node const* const again = arena.newNode(NodeKind::text);
    EXPECT_EQ(again, node);
    EXPECT_EQ(again->flags, 0);
}

TEST(Arena, NeedsFewBlocksForManyNodes) {
    Arena arena;
    for (int i = 0; i != 100000; ++i)
        arena.newNode(NodeKind::element);
    EXPECT_GE(arena.footprint(), 100000 * sizeof(Node));
    EXPECT_LE(arena.footprint(), 150000 * sizeof(Node));
}

TEST(Arena, PutsTheNodesOfLargeDocumentsIntoWholeLargePages) {
    Arena arena;
    std::size_t small = 0; // bytes
    Node const* node = nullptr;
    while (arena.footprint() < largePage) {
        small = arena.footprint();
        node = arena.newNode(NodeKind::element);
    }
    EXPECT_EQ(arena.footprint() - small, largePage);
    EXPECT_LE(small, largePage / 2) << "small documents need no large pages";
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(node) % largePage, 0U);
    for (std::size_t i = 1; i != largePage / sizeof(Node); ++i) {
        Node const* const following = arena.newNode(NodeKind::element);
        ASSERT_EQ(following, node + 1) << i;
        node = following;
    }
    Node const* const first = arena.newNode(NodeKind::element);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % largePage, 0U);
}

TEST(Arena, RoundsTextsUpToTheirClass) {
    struct Row {
        std::size_t length;
        std::size_t capacity;
    };

    Row const rows[] = {{17, 24},       {24, 24},          {25, 32},       {32, 32},
                        {33, 48},       {48, 48},          {49, 64},       {65, 96},
                        {97, 128},      {49152, 49152},    {49153, 65536}, {65536, 65536},
                        {65537, 65537}, {1000000, 1000000}};
    for (Row const& row : rows) {
        Arena arena;
        EXPECT_EQ(arena.newRecyclableText(row.length).capacity, row.capacity) << row.length;
        EXPECT_EQ(arena.newExactText(row.length).capacity, row.length);
    }
}

TEST(Arena, GivesAFreedTextAgain) {
    for (std::size_t const length : {17U, 24U, 25U, 63U, 64U, 100U, 5000U, 65536U}) {
        Arena arena;
        Arena::TextBlock const block = arena.newRecyclableText(length);
        arena.freeText(block);
        EXPECT_EQ(arena.newRecyclableText(length).data, block.data) << length;
    }
}

TEST(Arena, GivesAnExactTextAgainOnlyForWhatFitsIn) {
    Arena arena;
    Arena::TextBlock const block = arena.newExactText(50);
    arena.freeText(block);
    EXPECT_NE(arena.newRecyclableText(50).data, block.data);
    EXPECT_EQ(arena.newRecyclableText(48).data, block.data);
}

TEST(Arena, GivesHugeTextsBackToTheHeap) {
    Arena arena;
    std::size_t const before = arena.footprint();
    std::vector<Arena::TextBlock> blocks;
    for (std::size_t i = 0; i != 5; ++i)
        blocks.push_back(arena.newRecyclableText(65537 + i));
    EXPECT_GE(arena.footprint(), before + std::size_t{5} * 65537);
    for (std::size_t const i : {2U, 0U, 4U, 1U, 3U}) // middle, last made, first made
        arena.freeText(blocks[i]);
    EXPECT_EQ(arena.footprint(), before);
}

TEST(Arena, GivesBlocksThatDoNotOverlap) {
    Arena arena;
    std::mt19937 random{7};
    std::vector<std::pair<Arena::TextBlock, char>> live;
    auto const check = [&](std::size_t i) {
        auto const [block, mark] = live[i];
        EXPECT_EQ(std::string_view(block.data, block.capacity).find_first_not_of(mark),
                  std::string_view::npos);
        arena.freeText(block);
        live[i] = live.back();
        live.pop_back();
    };
    for (int step = 0; step != 20000; ++step) {
        if (live.size() > 100) check(random() % live.size());
        std::size_t const length = 1 + random() % (random() % 50 == 0 ? 70000 : 300);
        bool const exact = random() % 2 == 0;
        auto const block = exact ? arena.newExactText(length) : arena.newRecyclableText(length);
        auto const mark = static_cast<char>('a' + step % 26);
        std::memset(block.data, mark, block.capacity);
        live.emplace_back(block, mark);
    }
    while (!live.empty())
        check(0);
}

TEST(Arena, AlignsPermanentStorage) {
    Arena arena;
    for (std::size_t const alignment : {1U, 8U, 2U, 16U, 4U, 1U, 8U}) {
        auto const address = reinterpret_cast<std::uintptr_t>(arena.newPermanent(13, alignment));
        EXPECT_EQ(address % alignment, 0U);
    }
    EXPECT_NE(arena.newPermanent(std::size_t{3} << 20, 8), nullptr); // more than any block
}

using Footprint = Tree;

TEST_F(Footprint, StaysWhileATextIsSetAMillionTimes) {
    Node* const node = text(top(), "");
    std::string const longest(3000, 'x');
    std::mt19937 random{11};
    auto const setMany = [&](int times) {
        for (int i = 0; i != times; ++i)
            setText(document(), node, std::string_view{longest}.substr(0, random() % 3000));
    };
    setMany(10000);
    std::size_t const before = document().arena().footprint();
    setMany(990000);
    EXPECT_LE(document().arena().footprint(), before + (std::size_t{64} << 10));
}

TEST_F(Footprint, StaysWhileNodesComeAndGo) {
    auto const cycle = [&] {
        Node* const parent = element(top(), "e");
        for (int i = 0; i != 10; ++i)
            attribute(element(parent, "c"), name("a"), "a value of more than sixteen bytes");
        document().lifetimes().remove(parent);
    };
    for (int i = 0; i != 10; ++i)
        cycle();
    std::size_t const before = document().arena().footprint();
    for (int i = 0; i != 20000; ++i)
        cycle();
    EXPECT_EQ(document().arena().footprint(), before);
}

} // namespace tibxml::tree::test
