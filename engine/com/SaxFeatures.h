// What the SAX reader does and what it does not, by the names that callers know.
#pragma once

#include <optional>

namespace tibxml::com {

// Whether the reader has a feature; nothing for one that it does not know. Null is no name.
std::optional<bool> saxFeature(wchar_t const* name) noexcept;

} // namespace tibxml::com
