// Numbers of XPath: IEEE doubles with their own rules for text and rounding.
#pragma once

#include <string>
#include <string_view>

namespace tibxml::query {

// White space, an optional minus, digits with an optional point, white space; NaN for anything
// else. What is too large is infinite.
double toNumber(std::string_view text) noexcept;

// As few digits as tell the number from its neighbours, never an exponent; "NaN", "Infinity",
// "-Infinity"; both zeros are "0".
void appendNumber(double number, std::string& out);

// To the nearest integer, halves upwards; from -0.5 up to zero gives -0.
double roundNumber(double number) noexcept;

} // namespace tibxml::query
