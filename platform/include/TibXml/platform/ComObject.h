#pragma once

#include <TibXml/platform/ComInterface.h>

#include <type_traits>

namespace tibxml::platform {

/// The three functions of `IUnknown` for an object that offers the given interfaces: a class
/// derives from this and implements the interfaces' own functions. An object begins with one
/// reference, which belongs to whoever made it, and deletes itself with the last one.
///
/// Every interface named, all that those extend and `IUnknown` are answered; the identity is the
/// first one named. `InterfaceTraits` has to know them all. The count is a plain number: an object
/// belongs to one thread at a time.
template <class First, class... Others>
class ComObject : public First, public Others... {
public:
    ComObject() = default;
    ComObject(ComObject const&) = delete;
    ComObject& operator=(ComObject const&) = delete;

    HRESULT QueryInterface(REFIID iid, void** object) noexcept override {
        if (object == nullptr) return E_POINTER;
        *object = find(iid);
        if (*object == nullptr) return E_NOINTERFACE;
        ++references_;
        return S_OK;
    }

    ULONG AddRef() noexcept override { return ++references_; }

    ULONG Release() noexcept override {
        auto const left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    // Comes after the slots of all interfaces in the table, where it disturbs nobody.
    virtual ~ComObject() = default;

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

    ULONG references_ = 1;
};

} // namespace tibxml::platform
