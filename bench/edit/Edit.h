// Changing documents: making nodes and taking them away, setting values, copying and moving trees.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "../Operation.h"

namespace bench {

// Children of the root with two integer attributes each: as many are made, then all of them are
// removed, and that until `childrenPerRun` were made.
inline constexpr std::size_t childrenPerRun = 10'000;
inline constexpr wchar_t const* childName = L"entry";

ContenderPtr tibxmlChildren(std::string const& document, std::size_t atOnce);
ContenderPtr pugixmlChildren(std::string const& document, std::size_t atOnce);
ContenderPtr libxml2Children(std::string const& document, std::size_t atOnce);

// Making sure that window/position/left is there below the root: it is, or it is not and its three
// elements are removed again. TibXml has a function for that; its path is new each time. Callers of
// the others write a loop over names.
enum class Descendant { exists, missing };

ContenderPtr tibxmlEnsure(std::string const& document, Descendant descendant);
ContenderPtr pugixmlEnsure(std::string const& document, Descendant descendant);
ContenderPtr libxml2Ensure(std::string const& document, Descendant descendant);

// Another integer each time into item[@id='7']/value, and reading it back, each by the path. That
// is new each time for TibXml, compiled beforehand for the others.
inline int nextNumber(int& number) noexcept {
    number = (number + 1) % 100'000;
    return number;
}

ContenderPtr tibxmlSetAndRead(std::string const& document);
ContenderPtr pugixmlSetAndRead(std::string const& document);
ContenderPtr libxml2SetAndRead(std::string const& document);

// A copy of the root and all below it, in the same document. Untimed, the copy is dropped between
// runs and the next is made as in a program that has just loaded the document.
enum class DropCopy { untimed, timed };

ContenderPtr tibxmlClone(std::string const& document, DropCopy drop);
ContenderPtr pugixmlClone(std::string const& document, DropCopy drop);
ContenderPtr libxml2Clone(std::string const& document, DropCopy drop);

// Moving the first child of the root to the root of another document and back. Pugixml cannot move
// between documents: it copies and removes.
ContenderPtr tibxmlGraft(std::string const& document);
ContenderPtr pugixmlGraft(std::string const& document);
ContenderPtr libxml2Graft(std::string const& document);

// What nodes are moved to.
inline constexpr char const* otherDocument = "<other/>";

std::vector<Operation> editOperations();

} // namespace bench
