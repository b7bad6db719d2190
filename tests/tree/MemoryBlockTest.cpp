#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <new>
#include <thread>
#include <utility>
#include <vector>

#include <sys/mman.h>

#include <tree/MemoryBlock.h>

namespace tibxml::tree::test {

std::uintptr_t addressOf(MemoryBlock const& block) {
    return reinterpret_cast<std::uintptr_t>(block.memory());
}

TEST(MemoryBlock, CanBeWrittenFromEndToEnd) {
    for (std::size_t const size : {std::size_t{1}, std::size_t{1000}, largePage - 1, largePage,
                                   largePage + 1, 3 * largePage}) {
        MemoryBlock const block{size};
        std::memset(block.memory(), 'x', size);
        EXPECT_EQ(static_cast<char const*>(block.memory())[size - 1], 'x') << size;
        EXPECT_EQ(addressOf(block) % 64, 0U) << size;
    }
}

TEST(MemoryBlock, ConsistsOfWholeLargePagesWhenItsSizeDoes) {
    for (std::size_t pages = 1; pages != 5; ++pages) {
        MemoryBlock const block{pages * largePage};
        EXPECT_EQ(addressOf(block) % largePage, 0U) << pages;
    }
}

TEST(MemoryBlock, BelongsToOneObjectAtATime) {
    for (std::size_t const size : {std::size_t{100}, largePage}) {
        MemoryBlock first{size};
        void* const memory = first.memory();
        MemoryBlock const second{std::move(first)};
        EXPECT_EQ(second.memory(), memory);
        // NOLINTNEXTLINE(bugprone-use-after-move): what is left is promised
        EXPECT_EQ(first.memory(), nullptr);
    }
}

TEST(MemoryBlock, ThrowsWhenThereIsNotEnoughMemory) {
    std::size_t const tooMuch = (~std::size_t{0} / 2 + 1) / 2;
    static_assert((~std::size_t{0} / 2 + 1) / 2 % largePage == 0);
    EXPECT_THROW(MemoryBlock{tooMuch}, std::bad_alloc);
    EXPECT_THROW(MemoryBlock{~std::size_t{0} - largePage + 1}, std::bad_alloc);
}

TEST(MemoryBlock, OfALargePageServesTheNextOne) {
    void* const memory = MemoryBlock{largePage}.memory();
    MemoryBlock const next{largePage};
    EXPECT_EQ(next.memory(), memory);
}

// Counted by the addresses that the system maps for others meanwhile.
TEST(MemoryBlock, KeepsOnlyAFewSpareLargePages) {
    constexpr std::size_t count = spareLargePages + 4;
    std::vector<MemoryBlock> blocks;
    for (std::size_t i = 0; i != count; ++i)
        std::memset(blocks.emplace_back(largePage).memory(), 'x', largePage);
    std::vector<void*> memory;
    for (MemoryBlock const& block : blocks)
        memory.push_back(block.memory());
    blocks.clear();
    // A page that was given back is not mapped any more.
    auto const isMapped = [](void* page) { return ::msync(page, largePage, MS_ASYNC) == 0; };
    EXPECT_EQ(std::ranges::count_if(memory, isMapped),
              static_cast<std::ptrdiff_t>(spareLargePages));
}

TEST(MemoryBlock, SparePagesAreSharedByThreads) {
    std::vector<std::thread> threads;
    for (int i = 0; i != 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round != 200; ++round) {
                MemoryBlock const block{largePage};
                auto* const number = static_cast<int*>(block.memory());
                *number = round;
                EXPECT_EQ(*number, round);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace tibxml::tree::test
