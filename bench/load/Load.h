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

ContenderPtr tibxmlLoad(Sources const& sources, From from, Drop drop);
ContenderPtr pugixmlLoad(Sources const& sources, From from, Drop drop);
ContenderPtr libxml2Load(Sources const& sources, From from, Drop drop);

// Both sources must outlive what is returned.
std::vector<Operation> loadOperations(Sources const& large, Sources const& small);

} // namespace bench
