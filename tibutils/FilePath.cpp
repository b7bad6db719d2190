#include "FilePath.h"

#include <TibXml/platform/Utf.h>

namespace TibUtils::SystemIO {

std::optional<std::string> systemPath(std::wstring_view path) {
    std::string bytes;
    bool const nul = path.find(L'\0') != std::wstring_view::npos;
    if (path.empty() || nul || !tibxml::platform::appendUtf8(bytes, path)) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace TibUtils::SystemIO
