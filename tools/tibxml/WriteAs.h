#pragma once

#include <string>

#include <TibXml/WXmlValueAccessor.h>

#include "ValueType.h"

namespace tibxml::tool {

/// Writes a value of a type. Throws `Failure` when the text is not of the type, and when there can
/// be no value; `place` is what to call it.
void writeAs(ValueType const& type, WXmlValueAccessor& value, std::string const& text,
             std::string const& place);

} // namespace tibxml::tool
