#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace TibUtils::SystemIO {

// The form in which the system takes a path. Nothing for a path that cannot name a file: one which
// is empty, holds a NUL, or has no UTF-8 form. Replacing what has none could name another file.
std::optional<std::string> systemPath(std::wstring_view path);

} // namespace TibUtils::SystemIO
