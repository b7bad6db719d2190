#include <TibXml/platform/ComRuntime.h>

// This program makes no objects by their class.
std::span<tibxml::platform::ComClass const> tibxml::platform::comClasses() noexcept {
    return {};
}
