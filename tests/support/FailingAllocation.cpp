#include "FailingAllocation.h"

#include <cstdlib>
#include <new>

namespace {

struct State {
    bool on = false;
    bool failed = false;
    std::size_t succeeding = 0;
};

thread_local State state;

bool mayAllocate() noexcept {
    if (!state.on) return true;
    if (state.succeeding > 0) {
        --state.succeeding;
        return true;
    }
    state.failed = true;
    return false;
}

void* demanded(void* block) {
    if (block == nullptr) throw std::bad_alloc{};
    return block;
}

void* allocate(std::size_t size) {
    return demanded(std::malloc(size == 0 ? 1 : size));
}

void* allocateAligned(std::size_t size, std::size_t alignment) {
    void* block = nullptr;
    bool const done =
        mayAllocate() && ::posix_memalign(&block, alignment, size == 0 ? 1 : size) == 0;
    return demanded(done ? block : nullptr);
}

} // namespace

FailingAllocation::FailingAllocation(std::size_t succeeding) noexcept {
    state = {true, false, succeeding};
}

FailingAllocation::~FailingAllocation() {
    state.on = false;
}

bool FailingAllocation::happened() const noexcept {
    return state.failed;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the linker's names

// The linker sends every call of the C library's allocations here.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    return mayAllocate() ? __real_malloc(size) : nullptr;
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return mayAllocate() ? __real_calloc(count, size) : nullptr;
}
}

// NOLINTEND(bugprone-reserved-identifier)

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
