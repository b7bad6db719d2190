// The inside of an XML declaration: version="1.0" encoding="UTF-8".
#pragma once

#include <string>
#include <string_view>

namespace tibxml::output {

// The encoding that the content of a declaration names; empty when it names none.
std::string_view encodingOf(std::string_view declaration) noexcept;

// The content to write where the text is not bytes: without the encoding, unless that is UTF-16,
// which wide text was always allowed to claim.
std::string withoutEncoding(std::string_view declaration);

} // namespace tibxml::output
