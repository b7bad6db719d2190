#pragma once

#include <TibXml/platform/IUnknown.h>

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
