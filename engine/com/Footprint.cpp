#include <com/Footprint.h>

#include "NodeHandle.h"

namespace tibxml::com {

std::size_t footprint(IUnknown* object) {
    return handleOf(object)->storage().arena().footprint();
}

} // namespace tibxml::com
