#include <tree/MemoryBlock.h>

#include <cstdint>
#include <new>

#include <sys/mman.h>

namespace tibxml::tree {

namespace {

constexpr std::align_val_t alignment{64};

bool isOfLargePages(std::size_t size) noexcept {
    return size != 0 && size % largePage == 0;
}

// Small pages, which the kernel hands out one by one, would make a good part of the time of
// loading. From the heap such blocks would leave the advice behind on memory that others get next.
void* mapLargePages(std::size_t size) {
    std::size_t const enough = size + largePage;
    void* const mapped =
        ::mmap(nullptr, enough, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) throw std::bad_alloc{};
    auto* const begin = static_cast<char*>(mapped);
    std::size_t const before = (0 - reinterpret_cast<std::uintptr_t>(begin)) % largePage;
    if (before != 0) ::munmap(begin, before);
    char* const block = begin + before;
    ::munmap(block + size, largePage - before);
    ::madvise(block, size, MADV_HUGEPAGE);
    return block;
}

} // namespace

MemoryBlock::MemoryBlock(std::size_t size)
    : size_{size},
      memory_{isOfLargePages(size) ? mapLargePages(size) : ::operator new(size, alignment)} {}

MemoryBlock::~MemoryBlock() {
    if (memory_ == nullptr) return;
    if (isOfLargePages(size_)) {
        ::munmap(memory_, size_);
    } else {
        ::operator delete(memory_, alignment);
    }
}

} // namespace tibxml::tree
