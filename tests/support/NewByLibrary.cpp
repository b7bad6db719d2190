// New and delete by calls of the C library, which the linker can send elsewhere (--wrap): for
// programs that count allocations or make them fail.
#include <cstdlib>
#include <new>

namespace {

void* demanded(void* block) {
    if (block == nullptr) throw std::bad_alloc{};
    return block;
}

void* allocate(std::size_t size) {
    return demanded(std::malloc(size == 0 ? 1 : size));
}

// The library wants whole multiples of the alignment.
void* allocateAligned(std::size_t size, std::size_t alignment) {
    std::size_t const count = size == 0 ? 1 : (size + alignment - 1) / alignment;
    return demanded(std::aligned_alloc(alignment, count * alignment));
}

} // namespace

void* operator new(std::size_t size) {
    return allocate(size);
}

void* operator new[](std::size_t size) {
    return allocate(size);
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocateAligned(size, static_cast<std::size_t>(alignment));
}

void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept {
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete[](void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}

void operator delete[](void* block, std::size_t /*size*/) noexcept {
    std::free(block);
}

void operator delete(void* block, std::align_val_t /*alignment*/) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    std::free(block);
}
