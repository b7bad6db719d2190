#include "LiveBytes.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <libxml/xmlmemory.h>
#include <malloc.h>
#include <sys/mman.h>

namespace {

// Of all threads, of which the tests have one.
std::int64_t live = 0;
std::int64_t peak = 0;

void add(std::int64_t bytes) noexcept {
    live += bytes;
    peak = std::max(peak, live);
}

std::int64_t sizeOf(void* block) noexcept {
    return static_cast<std::int64_t>(::malloc_usable_size(block));
}

void* counted(void* block) noexcept {
    add(sizeOf(block));
    return block;
}

} // namespace

std::int64_t liveBytes() noexcept {
    return live;
}

PeakOfBytes::PeakOfBytes() noexcept : start_{live} {
    peak = live;
}

std::int64_t PeakOfBytes::above() const noexcept {
    return peak - start_;
}

// NOLINTBEGIN(bugprone-reserved-identifier): the linker's names

// The linker sends every call from the code under test here.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void __real_free(void* block);
void* __real_mmap(void* address, std::size_t size, int protection, int flags, int file,
                  off_t offset);
int __real_munmap(void* address, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    return counted(__real_malloc(size));
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return counted(__real_calloc(count, size));
}

void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return counted(__real_aligned_alloc(alignment, size));
}

void* __wrap_realloc(void* block, std::size_t size) {
    std::int64_t const before = sizeOf(block);
    void* const moved = __real_realloc(block, size);
    if (moved != nullptr || size == 0) add(sizeOf(moved) - before);
    return moved;
}

void __wrap_free(void* block) {
    add(-sizeOf(block));
    __real_free(block);
}

void* __wrap_mmap(void* address, std::size_t size, int protection, int flags, int file,
                  off_t offset) {
    void* const pages = __real_mmap(address, size, protection, flags, file, offset);
    if (pages != MAP_FAILED) add(static_cast<std::int64_t>(size));
    return pages;
}

int __wrap_munmap(void* address, std::size_t size) {
    int const result = __real_munmap(address, size);
    if (result == 0) add(-static_cast<std::int64_t>(size));
    return result;
}
}

// NOLINTEND(bugprone-reserved-identifier)

namespace {

// Calls of the C library from here, which are those that are counted.

void* take(std::size_t size) {
    return std::malloc(size);
}

void* resize(void* block, std::size_t size) {
    return std::realloc(block, size);
}

void giveBack(void* block) {
    std::free(block);
}

char* copyOf(char const* text) {
    std::size_t const size = std::strlen(text) + 1;
    auto* const copy = static_cast<char*>(std::malloc(size));
    if (copy != nullptr) std::memcpy(copy, text, size);
    return copy;
}

// Before main, so before any use of libxml2.
bool const countsLibxml2 = xmlMemSetup(giveBack, take, resize, copyOf) == 0;

} // namespace
