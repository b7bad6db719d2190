// A piece of memory, given back when the object goes.
#pragma once

#include <cstddef>
#include <utility>

namespace tibxml::tree {

inline constexpr std::size_t largePage = std::size_t{1} << 21;

// So many freed blocks of one large page are kept at most, in the whole process: 32 MiB.
inline constexpr std::size_t spareLargePages = 16;

class MemoryBlock {
public:
    static constexpr std::size_t alignment = 64;

    // Sizes that are multiples of largePage are whole large pages, where the system has them.
    // Throws std::bad_alloc.
    explicit MemoryBlock(std::size_t size);

    MemoryBlock(MemoryBlock&& other) noexcept
        : size_{other.size_},
          allocated_{std::exchange(other.allocated_, nullptr)} {}

    MemoryBlock& operator=(MemoryBlock&&) = delete;
    ~MemoryBlock();

    // Aligned for every type and to `alignment` bytes; null when moved from.
    void* memory() const noexcept;

private:
    std::size_t size_;
    void* allocated_ = nullptr;
};

} // namespace tibxml::tree
