#include "TestMode.h"

#include <TibXml/platform/ComRuntime.h>

namespace tibxml::dom {

bool isTestMode() noexcept {
    static bool const marked = GetModuleHandleA("UnitTestMarker.dll") != nullptr;
    return marked;
}

} // namespace tibxml::dom
