// The encoding that a document names for itself.
#pragma once

#include <string_view>

namespace tibxml::reader {

// The encoding that the XML declaration at the start of `text` names; a part of it, or empty.
std::string_view declaredEncoding(std::string_view text) noexcept;

} // namespace tibxml::reader
