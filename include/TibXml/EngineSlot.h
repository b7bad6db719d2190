#pragma once

#include <cstddef>
#include <utility>

namespace tibxml::engine {

/// Its address stands for "a place without an object". Nothing is ever read or called through it.
inline std::max_align_t emptyPlace;

} // namespace tibxml::engine

/// The place in which a handle keeps its reference to an object of the engine. Moving takes the
/// whole place away, so that a handle that was moved from differs from an empty one: it has none.
/// All that is told by one pointer, without a place on the heap. For the handles alone.
///
/// Threads: as the handle.
template <class Pointer>
class EngineSlot {
public:
    /// A place without an object.
    EngineSlot() noexcept : kept_{Mark(), false} {}

    explicit EngineSlot(Pointer const& pointer) noexcept : EngineSlot{Pointer{pointer}} {}

    explicit EngineSlot(Pointer&& pointer) noexcept
        : kept_{pointer ? pointer.Detach() : Mark(), false} {}

    EngineSlot(EngineSlot&& other) noexcept = default;

    EngineSlot& operator=(EngineSlot&& other) noexcept {
        if (this != &other) EngineSlot{std::move(other)}.Swap(*this);
        return *this;
    }

    ~EngineSlot() {
        if (IsEmptyPlace()) kept_.Detach();
    }

    void Swap(EngineSlot& other) noexcept { kept_.Swap(other.kept_); }

    /// Whether there is a place, with or without an object.
    explicit operator bool() const noexcept { return kept_.GetInterfacePtr() != nullptr; }

    /// What is kept; empty when there is no place.
    Pointer const& operator*() const noexcept { return IsEmptyPlace() ? none : kept_; }

    /// Keeps another object, or none, and then lets the old one go. There is a place afterwards.
    void Keep(Pointer const& pointer) noexcept {
        if (!pointer || kept_ != pointer) EngineSlot{pointer}.Swap(*this);
    }

    void Keep(Pointer&& pointer) noexcept { EngineSlot{std::move(pointer)}.Swap(*this); }

    /// Drops the object; an exception of its own leaves everything as it was.
    void Release() {
        if (!**this) return;
        kept_.Release();
        EngineSlot{}.Swap(*this);
    }

private:
    using Object = decltype(std::declval<Pointer const&>().GetInterfacePtr());

    static Object Mark() noexcept { return reinterpret_cast<Object>(&tibxml::engine::emptyPlace); }

    bool IsEmptyPlace() const noexcept { return kept_.GetInterfacePtr() == Mark(); }

    static constinit inline Pointer const none{};

    Pointer kept_; // null when there is no place
};
