#pragma once

#include <TibXml/WXPath.h>

namespace tibxml::tool {

/// The string of a path as it is put together from its steps, with single quotes.
CString rebuilt(WXPath path);

} // namespace tibxml::tool
