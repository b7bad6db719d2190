// Streaming through a file and counting what is in it.
#pragma once

#include <string>

#include "../Contender.h"

namespace bench {

// Each one reads the file piece by piece and counts elements, their ends, attributes, and the
// characters of their values, of names and of text, by functions that it is called back with. Wide
// characters for TibXml, bytes for the others: the same numbers for a file in ASCII, and otherwise
// the characters are not part of the answer.
enum class Letters { ascii, any };

ContenderPtr tibxmlSax(std::string const& path, Letters letters);
ContenderPtr libxml2Sax(std::string const& path, Letters letters);
ContenderPtr expatSax(std::string const& path, Letters letters);

Letters lettersOf(std::string const& text) noexcept;

// Measures them over the text in a file of its own, and prints how fast they are.
void printSax(std::string const& text);

} // namespace bench
