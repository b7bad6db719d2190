// Blocks of one size for objects that come and go.
#pragma once

#include <cstddef>
#include <new>

namespace tibxml::com {

// Keeps a few freed blocks for the next objects, since callers mostly let an object go before they
// ask for another. Every block comes from the global heap: one may be given to any pool of its
// size.
template <std::size_t size>
class BlockPool {
public:
    static constexpr std::size_t blockSize = size;

    BlockPool() noexcept = default;
    BlockPool(BlockPool const&) = delete;
    BlockPool& operator=(BlockPool const&) = delete;

    ~BlockPool() {
        while (free_ != nullptr)
            ::operator delete(pop());
    }

    // Throws std::bad_alloc.
    void* take() { return free_ != nullptr ? pop() : ::operator new(size); }

    void give(void* block) noexcept {
        if (count_ == most) return ::operator delete(block);
        free_ = new (block) Free{free_};
        ++count_;
    }

private:
#if defined(__SANITIZE_ADDRESS__)
    static constexpr std::size_t most = 0; // so that whoever uses a deleted object is found out
#else
    static constexpr std::size_t most = 32;
#endif

    struct Free {
        Free* next;
    };

    static_assert(size >= sizeof(Free));

    void* pop() noexcept {
        Free* const block = free_;
        free_ = block->next;
        --count_;
        return block;
    }

    Free* free_ = nullptr;
    std::size_t count_ = 0;
};

} // namespace tibxml::com
