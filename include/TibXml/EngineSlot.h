#pragma once

#include <utility>

/// The place in which a handle keeps its reference to an object of the engine. Moving takes the
/// whole place away, so that a handle that was moved from differs from an empty one: it has none.
/// For the handles alone.
///
/// Threads: as the handle.
template <class Pointer>
class EngineSlot {
public:
    /// A place without an object.
    EngineSlot() noexcept = default;

    explicit EngineSlot(Pointer const& pointer) noexcept : pointer_{pointer} {}

    EngineSlot(EngineSlot&& other) noexcept
        : pointer_{std::move(other.pointer_)},
          exists_{std::exchange(other.exists_, false)} {}

    EngineSlot& operator=(EngineSlot&& other) noexcept {
        if (this == &other) return *this;
        pointer_ = std::move(other.pointer_);
        exists_ = std::exchange(other.exists_, false);
        return *this;
    }

    ~EngineSlot() = default;

    void Swap(EngineSlot& other) noexcept {
        pointer_.Swap(other.pointer_);
        std::swap(exists_, other.exists_);
    }

    /// Whether there is a place, with or without an object.
    explicit operator bool() const noexcept { return exists_; }

    /// What is kept; empty when there is no place.
    Pointer const& operator*() const noexcept { return pointer_; }

    Pointer& operator*() noexcept { return pointer_; }

private:
    Pointer pointer_;
    bool exists_ = true;
};
