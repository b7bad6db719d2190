// The measurements on one page.
#pragma once

#include <vector>

#include "Operation.h"

namespace bench {

void printHeading();
void printRow(Row const& row);

// Whether the row is as good as its targets ask.
bool isReached(Row const& row);

} // namespace bench
