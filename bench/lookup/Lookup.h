// Finding one element by an attribute and reading a number from below it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "../Operation.h"

namespace bench {

// Reading item[@id='N']/value in a document. The path is new each time for TibXml, compiled
// beforehand for the others.
struct Lookup {
    std::string const& document;
    std::size_t id;
    bool freshDocument; // loaded anew, untimed, before every look-up
};

ContenderPtr tibxmlLookup(Lookup const& lookup);
ContenderPtr pugixmlLookup(Lookup const& lookup);
ContenderPtr libxml2Lookup(Lookup const& lookup);

// Twenty such look-ups all over a large document, each for another id: the path is made from the id
// by TibXml; the others have a compiled query with a variable. The look-ups of one run differ from
// those of the run before.
ContenderPtr tibxmlScattered(std::string const& document);
ContenderPtr pugixmlScattered(std::string const& document);
ContenderPtr libxml2Scattered(std::string const& document);

inline constexpr std::size_t scatteredLookups = 20;

// The id that comes after one in a walk that visits all of the large document's before any again.
inline std::size_t nextScattered(std::size_t id) noexcept {
    return (id + 30'011) % 50'000;
}

std::vector<Operation> lookupOperations();

} // namespace bench
