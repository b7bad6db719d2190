#pragma once

#include <optional>

namespace TibUtils {

/// A value or nothing.
template <class T>
using optional = std::optional<T>;

} // namespace TibUtils
