#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

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

} // namespace tibxml::tree::test
