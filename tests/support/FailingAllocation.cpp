#include "FailingAllocation.h"

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
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    return mayAllocate() ? __real_malloc(size) : nullptr;
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return mayAllocate() ? __real_calloc(count, size) : nullptr;
}

void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return mayAllocate() ? __real_aligned_alloc(alignment, size) : nullptr;
}
}

// NOLINTEND(bugprone-reserved-identifier)
