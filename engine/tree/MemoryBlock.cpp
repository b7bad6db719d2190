#include <tree/MemoryBlock.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <new>

#include <sys/mman.h>

namespace tibxml::tree {

namespace {

bool isOfLargePages(std::size_t size) noexcept {
    return size != 0 && size % largePage == 0;
}

// Small pages, which the kernel hands out one by one, would make a good part of the time of
// loading. From the heap such blocks would leave the advice on memory that others get next.
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

// A few freed large pages, for the next document of any thread: the system fills a new page with
// zeros first. It may take back what is in the spare ones whenever it is short of memory
// (MADV_FREE), and gets all of them back when the library is unloaded.
class SpareLargePages {
public:
    ~SpareLargePages() {
        for (std::atomic<void*>& place : places_) {
            if (void* const page = place.exchange(nullptr)) ::munmap(page, largePage);
        }
    }

    // Null when there is none.
    void* take() noexcept {
        for (std::atomic<void*>& place : places_) {
            if (place.load(std::memory_order_relaxed) == nullptr) continue;
            if (void* const page = place.exchange(nullptr)) return page;
        }
        return nullptr;
    }

    void give(void* page) noexcept {
        ::madvise(page, largePage, MADV_FREE);
        for (std::atomic<void*>& place : places_) {
            void* empty = nullptr;
            if (place.compare_exchange_strong(empty, page)) return;
        }
        ::munmap(page, largePage);
    }

private:
    std::array<std::atomic<void*>, spareLargePages> places_{};
};

SpareLargePages& spares() noexcept {
    static SpareLargePages pages;
    return pages;
}

void* alignedWithin(void* memory) noexcept {
    auto const address = reinterpret_cast<std::uintptr_t>(memory);
    return static_cast<char*>(memory) + (0 - address) % MemoryBlock::alignment;
}

// The heap aligns for 16 bytes; asking it for more takes many times as long.
void* allocateForAlignment(std::size_t size) {
    std::size_t const enough = size + MemoryBlock::alignment;
    if (enough < size) throw std::bad_alloc{};
    return ::operator new(enough);
}

} // namespace

MemoryBlock::MemoryBlock(std::size_t size) : size_{size} {
    if (size == largePage) allocated_ = spares().take();
    if (allocated_ != nullptr) return;
    allocated_ = isOfLargePages(size) ? mapLargePages(size) : allocateForAlignment(size);
}

MemoryBlock::~MemoryBlock() {
    if (allocated_ == nullptr) return;
    if (size_ == largePage) {
        spares().give(allocated_);
    } else if (isOfLargePages(size_)) {
        ::munmap(allocated_, size_);
    } else {
        ::operator delete(allocated_);
    }
}

void* MemoryBlock::memory() const noexcept {
    return isOfLargePages(size_) ? allocated_ : alignedWithin(allocated_);
}

} // namespace tibxml::tree
