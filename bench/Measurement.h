// How long operations take.
#pragma once

#include "Operation.h"

namespace bench {

// Runs all contenders in turn, round after round, so that whatever else the machine does hits them
// alike, and takes the best round of each. Throws std::runtime_error when their answers differ.
Row measure(Operation& operation);

} // namespace bench
