#pragma once

#include <TibXml/platform/IUnknown.h>

#include <type_traits>

namespace tibxml::platform {

/// Which interfaces an object offers: all that are named, all that those extend and `IUnknown`; the
/// identity is the first one named. `InterfaceTraits` has to know them all.
template <class First, class... Others>
class ComInterfaces : public First, public Others... {
public:
    HRESULT QueryInterface(REFIID iid, void** object) noexcept override {
        if (object == nullptr) return E_POINTER;
        *object = find(iid);
        if (*object == nullptr) return E_NOINTERFACE;
        static_cast<First*>(this)->AddRef();
        return S_OK;
    }

protected:
    ComInterfaces() = default;
    ~ComInterfaces() = default;

private:
    void* find(REFIID iid) noexcept {
        if (iid == IID_IUnknown) return static_cast<First*>(this);
        void* found = answer<First, First>(iid);
        // The first that answers counts, as in a chain of comparisons.
        static_cast<void>(
            ((found != nullptr) || ... || ((found = answer<Others, Others>(iid)) != nullptr)));
        return found;
    }

    /// The object as `Named` when `iid` is the identifier of `Level`, which is that interface or
    /// one that it extends.
    template <class Named, class Level>
    void* answer(REFIID iid) noexcept {
        if constexpr (std::is_same_v<Level, IUnknown>) {
            return nullptr;
        } else {
            if (iid == iidOf<Level>()) return static_cast<Level*>(static_cast<Named*>(this));
            return answer<Named, typename InterfaceTraits<Level>::Base>(iid);
        }
    }
};

/// The three functions of `IUnknown` for an object that offers the given interfaces: a class
/// derives from this and implements the interfaces' own functions. An object begins with one
/// reference, which belongs to its maker, and deletes itself with the last one.
///
/// The count is a plain number: an object belongs to one thread at a time.
template <class First, class... Others>
class ComObject : public ComInterfaces<First, Others...> {
public:
    ComObject() = default;
    ComObject(ComObject const&) = delete;
    ComObject& operator=(ComObject const&) = delete;

    ULONG AddRef() noexcept final { return ++references_; }

    ULONG Release() noexcept final {
        auto const left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    // Comes after the slots of all interfaces in the table, where it disturbs none of them.
    virtual ~ComObject() = default;

private:
    ULONG references_ = 1;
};

/// The same for an object that is a part of another one: it has an identity of its own and lives as
/// long as its owner, whose references it shares.
template <class First, class... Others>
class ComPart : public ComInterfaces<First, Others...> {
public:
    ComPart(ComPart const&) = delete;
    ComPart& operator=(ComPart const&) = delete;

    ULONG AddRef() noexcept final { return owner_.AddRef(); }

    ULONG Release() noexcept final { return owner_.Release(); }

protected:
    explicit ComPart(IUnknown& owner) noexcept : owner_{owner} {}

    ~ComPart() = default;

private:
    IUnknown& owner_;
};

} // namespace tibxml::platform
