// Loading: from memory, from wide text and from a file.
#pragma once

#include <string>
#include <vector>

#include "../Operation.h"

namespace bench {

struct Sources {
    std::string const& text; // UTF-8
    std::wstring wide;
    std::string path;
    std::wstring widePath;
};

enum class From { memory, wideText, file };
enum class Drop { untimed, timed };

// libxml2 makes text nodes of the white space that lays a document out unless told otherwise. The
// others never do.
enum class Layout { asByDefault, dropped };

// Gives what the allocator keeps back to the system, so that the next load finds the memory of a
// program that has just started and not that of the contender before it.
void returnFreeMemory() noexcept;

ContenderPtr tibxmlLoad(Sources const& sources, From from, Drop drop);
ContenderPtr pugixmlLoad(Sources const& sources, From from, Drop drop);
ContenderPtr libxml2Load(Sources const& sources, From from, Drop drop, Layout layout);

// Both sources must outlive what is returned.
std::vector<Operation> loadOperations(Sources const& large, Sources const& small);

} // namespace bench
