#include <com/Measures.h>

#include <atomic>

#include "NodeHandle.h"

namespace tibxml::com {

namespace {

std::atomic<std::size_t> live{0};

} // namespace

std::size_t liveObjects() noexcept {
    return live.load(std::memory_order_relaxed);
}

LiveObject::LiveObject() noexcept {
    live.fetch_add(1, std::memory_order_relaxed);
}

LiveObject::~LiveObject() {
    live.fetch_sub(1, std::memory_order_relaxed);
}

std::size_t footprint(IUnknown* object) {
    return handleOf(object)->storage().arena().footprint();
}

} // namespace tibxml::com
