// The measurements on one page.
#pragma once

#include <string>

#include "Operation.h"

namespace bench {

// A number as std::printf writes it, and a value of a row as people read it.
std::string formatted(char const* format, double value);
std::string inUnit(double value, Unit unit);

void printHeading();
void printRow(Row const& row);

// Whether the row is as good as its targets ask.
bool isReached(Row const& row);

} // namespace bench
