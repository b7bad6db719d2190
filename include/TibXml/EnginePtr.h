#pragma once

#include <TibXml/engine/IXMLDOMDocument.h>
#include <TibXml/platform/ComError.h>

#include <cstddef>
#include <utility>

/// A counted reference to an object of the engine, possibly none. Copying adds a reference,
/// destroying or overwriting drops one; nothing of it throws but `operator->` and what an object's
/// own `Release` throws.
///
/// This is how a caller reaches what the handles do not offer: the engine's interfaces are in
/// `<TibXml/engine/...>`, their functions answer `HRESULT`s and hand out references that
/// `GetAddress` takes over.
///
/// Threads: as the object that it refers to, which belongs to one thread at a time.
template <class Interface>
class EnginePtr {
public:
    EnginePtr() noexcept = default;

    EnginePtr(std::nullptr_t) noexcept {}

    /// Refers to an object, null for none, with a reference of its own; with `addReference` false
    /// it takes over the caller's.
    explicit EnginePtr(Interface* object, bool addReference = true) noexcept : object_{object} {
        if (addReference) AddReference(object_);
    }

    EnginePtr(EnginePtr const& other) noexcept : EnginePtr{other.object_} {}

    /// The other one is empty afterwards.
    EnginePtr(EnginePtr&& other) noexcept : object_{std::exchange(other.object_, nullptr)} {}

    ~EnginePtr() {
        if (object_ != nullptr) object_->Release();
    }

    /// Refers to the other one's object before the own one is released; does nothing when they are
    /// the same already.
    EnginePtr& operator=(EnginePtr const& other) noexcept {
        if (this == &other || object_ == other.object_) return *this;
        EnginePtr{other}.Swap(*this);
        return *this;
    }

    EnginePtr& operator=(EnginePtr&& other) noexcept {
        EnginePtr{std::move(other)}.Swap(*this);
        return *this;
    }

    EnginePtr& operator=(std::nullptr_t) noexcept {
        EnginePtr{}.Swap(*this);
        return *this;
    }

    void Swap(EnginePtr& other) noexcept { std::swap(object_, other.object_); }

    /// The object to call. Throws `_com_error` with `E_POINTER` when there is none.
    Interface* operator->() const {
        if (object_ == nullptr) _com_issue_error(E_POINTER);
        return object_;
    }

    /// The object, null when there is none; the reference stays here.
    operator Interface*() const noexcept { return object_; }

    Interface* GetInterfacePtr() const noexcept { return object_; }

    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// Drops the reference; an exception of the object's own leaves everything as it was.
    void Release() {
        if (object_ == nullptr) return;
        object_->Release();
        object_ = nullptr;
    }

    /// Drops the reference and gives the place where a call may store one for this to own.
    Interface** GetAddress() noexcept {
        EnginePtr{}.Swap(*this);
        return &object_;
    }

    /// Takes over the caller's reference to an object.
    void Attach(Interface* object) noexcept { EnginePtr{object, false}.Swap(*this); }

    /// Gives the reference to the caller; empty afterwards.
    Interface* Detach() noexcept { return std::exchange(object_, nullptr); }

private:
    static void AddReference(Interface* object) noexcept {
        if (object != nullptr) object->AddRef();
    }

    Interface* object_ = nullptr;
};

/// What a document, a node and a list of nodes refer to.
using WXmlDocPtr = EnginePtr<IXMLDOMDocument3>;
using WXmlNodePtr = EnginePtr<IXMLDOMNode>;
using WXmlNodeListPtr = EnginePtr<IXMLDOMNodeList>;

namespace tibxml::engine {

/// Its address stands for "a place without an object". Nothing is ever read or called through it.
inline std::max_align_t emptyPlace;

} // namespace tibxml::engine

/// The place in which a handle keeps its reference to an object of the engine. Moving takes the
/// whole place away, so that a handle that was moved from differs from an empty one: it has none.
/// One pointer says all that, without a place on the heap. For the handles alone, which hold it by
/// value: that is why callers see it.
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
