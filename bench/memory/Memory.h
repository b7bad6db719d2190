// Memory taken by a loaded document.
#pragma once

#include <string>
#include <string_view>

#include "../Operation.h"

namespace bench {

inline constexpr std::string_view memoryRow = "bytes of memory per node, 5 MB loaded";

// Bytes of the process that come from no file: from whichever allocator and as far as touched.
double anonymousMemory();

// How many elements, attributes, texts, comments and processing instructions the document has.
double nodeCount(std::string const& text);

// Bytes per node (elements, attributes, texts, comments, processing instructions) of the large
// document in each library, as the system counts them.
Row memoryPerNode();

} // namespace bench
