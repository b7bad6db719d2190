// Single edits on documents of growing size, ours alone.
#pragma once

#include <string_view>

namespace bench {

inline constexpr std::string_view editsBySize = "single edits, by the nodes of the document";

// Prints what each edit takes on 1,000 to 1,000,000 nodes, and the ratio to the smallest.
void printEditsBySize();

} // namespace bench
