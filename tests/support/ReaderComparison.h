// The reader against libxml2: the same verdict, the same tree, the same events.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tibxml::reader::test {

// As bytes in the encoding that they declare, or as text that is UTF-8 whatever it declares.
enum class Entry { bytes, text };

// What differs, in words; empty when nothing does.
std::string difference(std::string_view document, Entry entry);

// Where the peer's verdict is known not to be what the standard says: the rule, which documents it
// is about, and whether there are any among them that are well-formed.
struct KnownDifference {
    char const* rule;
    bool (*isAbout)(std::string_view document, Entry entry);
    bool mayBeAccepted;
};

std::span<KnownDifference const> knownDifferences();

} // namespace tibxml::reader::test
