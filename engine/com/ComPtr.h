// Owns one reference to an engine object.
#pragma once

#include <utility>

namespace tibxml::com {

template <class Object>
class ComPtr {
public:
    ComPtr() noexcept = default;

    // Adds a reference.
    explicit ComPtr(Object* object) noexcept : object_{object} {
        if (object_ != nullptr) object_->AddRef();
    }

    // Takes over a reference that the caller owns.
    static ComPtr adopt(Object* object) noexcept {
        ComPtr pointer;
        pointer.object_ = object;
        return pointer;
    }

    ComPtr(ComPtr const& other) noexcept : ComPtr{other.object_} {}

    ComPtr(ComPtr&& other) noexcept : object_{std::exchange(other.object_, nullptr)} {}

    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    ~ComPtr() {
        if (object_ != nullptr) object_->Release();
    }

    Object* get() const noexcept { return object_; }

    Object* operator->() const noexcept { return object_; }

    Object& operator*() const noexcept { return *object_; }

    explicit operator bool() const noexcept { return object_ != nullptr; }

    // Hands the reference to the caller.
    Object* detach() noexcept { return std::exchange(object_, nullptr); }

private:
    Object* object_ = nullptr;
};

} // namespace tibxml::com
