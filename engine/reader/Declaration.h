// The XML declaration.
#pragma once

#include <string>

namespace tibxml::reader {

// Whether a declaration begins at p, where there are at least six bytes, and not an instruction
// with a longer name.
bool isDeclaration(char const* p) noexcept;

// Reads the declaration at p: the place after it, or null when the text ends before. `content`
// becomes what it says, with double quotes and single blanks. Throws ParseFailure and
// std::bad_alloc.
char const* readDeclaration(char const* p, char const* end, std::string& content);

} // namespace tibxml::reader
