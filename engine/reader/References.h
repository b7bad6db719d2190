// Character references and the five entities that XML has without document types.
#pragma once

namespace tibxml::reader {

// Reads the reference at p, which is at its '&': the character that it means, and the place after
// its ';', or null when the text ends before. Throws ParseFailure.
char const* readReference(char const* p, char const* end, char32_t& character);

} // namespace tibxml::reader
