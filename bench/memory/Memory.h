// Heap taken by a loaded document.
#pragma once

#include "../Operation.h"

namespace bench {

// Bytes per node (elements, attributes, texts, comments, processing instructions) of the large
// document in each library, as the allocator counts them.
Row memoryPerNode();

} // namespace bench
