#include "FailingNew.h"

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

void* allocate(std::size_t size, std::size_t alignment) {
    void* block = nullptr;
    if (mayAllocate() && ::posix_memalign(&block, alignment, size == 0 ? 1 : size) == 0)
        return block;
    throw std::bad_alloc{};
}

} // namespace

FailingNew::FailingNew(std::size_t succeeding) noexcept {
    state = {true, false, succeeding};
}

FailingNew::~FailingNew() {
    state.on = false;
}

bool FailingNew::happened() const noexcept {
    return state.failed;
}

void* operator new(std::size_t size) {
    return allocate(size, alignof(std::max_align_t));
}

void* operator new[](std::size_t size) {
    return allocate(size, alignof(std::max_align_t));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocate(size, static_cast<std::size_t>(alignment));
}

void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept {
    return mayAllocate() ? std::malloc(size == 0 ? 1 : size) : nullptr;
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
