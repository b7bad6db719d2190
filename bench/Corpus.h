// Documents of several kinds, for what depends on the kind: each is about 5 MB as such files are,
// but for a short one of 2 KB. The same bytes every time, and no namespaces, which the libraries
// count each in its own way.
#pragma once

#include <string>
#include <vector>

namespace bench {

struct CorpusDocument {
    char const* name;
    std::string (*make)();
};

std::vector<CorpusDocument> const& corpus();

// Elements in each other, a hundred deep, with one short text at the bottom.
std::string nestedGroups();

// Empty elements that have all their content in a dozen attributes.
std::string attributeRecords();

// Paragraphs with emphasis and links between the words, a third of which are not ASCII.
std::string prose();

} // namespace bench
