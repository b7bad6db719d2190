#pragma once

#include <TibXml/platform/WindowsTypes.h>

inline constexpr IID IID_IUnknown{
    0x00000000, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

/// What every object offers: its other interfaces, and the count that keeps it alive.
///
/// There is no virtual destructor, because it would take a slot of the table of functions that
/// every interface starts with: callers do not delete an object, its last `Release` does.
class IUnknown {
public:
    /// Stores the object's interface `iid` in `*object` with one more reference, which the caller
    /// releases. `E_NOINTERFACE` when there is none, `E_POINTER` when `object` is null; `*object`
    /// is null after any failure. Every way to ask one object for `IID_IUnknown` gives the same
    /// pointer, so comparing those shows whether two interfaces belong to one object.
    virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;

    /// Adds a reference. Returns the new count, which is good for tests only.
    virtual ULONG AddRef() = 0;

    /// Drops a reference; the object is gone when it was the last. Returns the new count.
    virtual ULONG Release() = 0;

protected:
    ~IUnknown() = default;
};

namespace tibxml::platform {

/// The body of an interface's traits: its identifier, and the interface that it extends.
template <IID const& Identifier, class BaseInterface>
struct InterfaceIs {
    static constexpr IID const& iid = Identifier;
    using Base = BaseInterface;
};

/// Connects an interface with its identifier, so that templates find the one from the other. Every
/// interface specialises it beside its own declaration:
/// `template <> struct tibxml::platform::InterfaceTraits<IThing> : InterfaceIs<IID_IThing,
/// IUnknown> {};`
template <class Interface>
struct InterfaceTraits;

template <>
struct InterfaceTraits<IUnknown> : InterfaceIs<IID_IUnknown, void> {};

/// The identifier of an interface type.
template <class Interface>
constexpr IID const& iidOf() noexcept {
    return InterfaceTraits<Interface>::iid;
}

} // namespace tibxml::platform
