#pragma once

#include <string>

#include <TibXml/platform/ComError.h>

namespace tibxml::tool {

/// What the engine says about a call that failed: its own words, or those for the code.
std::string describe(_com_error const& error);

} // namespace tibxml::tool
