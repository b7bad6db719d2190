// A piece of memory, given back when the object goes.
#pragma once

#include <cstddef>
#include <utility>

namespace tibxml::tree {

inline constexpr std::size_t largePage = std::size_t{1} << 21;

class MemoryBlock {
public:
    // Aligned for every type and to 64 bytes. Sizes that are multiples of largePage are whole large
    // pages, where the system has them. Throws std::bad_alloc.
    explicit MemoryBlock(std::size_t size);

    MemoryBlock(MemoryBlock&& other) noexcept
        : size_{other.size_},
          memory_{std::exchange(other.memory_, nullptr)} {}

    MemoryBlock& operator=(MemoryBlock&&) = delete;
    ~MemoryBlock();

    void* memory() const noexcept { return memory_; }

private:
    std::size_t size_;
    void* memory_; // null when moved from
};

} // namespace tibxml::tree
