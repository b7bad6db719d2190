#pragma once

#include <TibXml/platform/IUnknown.h>

namespace tibxml::dom {

/// Asks an object for its identity, which is the same pointer by whatever interface it is asked.
/// `identity` is for comparing only, its reference is given back at once; null for no object and
/// after a failure, whose code is returned.
HRESULT askIdentity(IUnknown* object, IUnknown*& identity);

} // namespace tibxml::dom
