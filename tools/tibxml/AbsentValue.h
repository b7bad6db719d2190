#pragma once

#include <string>

#include <TibXml/WXmlValueAccessor.h>

#include "Failure.h"
#include "ValueType.h"

namespace tibxml::tool {

/// Why a value does not read as a type: there is none, or it is something else. `place` is what to
/// call it.
Failure absentValue(std::string const& file, std::string const& place,
                    WXmlValueAccessor const& value, ValueType const& type);

} // namespace tibxml::tool
