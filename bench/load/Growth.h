// Loading documents of growing size, ours alone.
#pragma once

namespace bench {

// Prints how long 5 MB to 200 MB take, per megabyte.
void printGrowth();

} // namespace bench
