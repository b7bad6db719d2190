// What the language forbids in a stylesheet and libxslt only warns of.
#pragma once

#include <libxslt/xsltInternals.h>

#include "TransformErrors.h"

namespace tibxml::transform {

// Throws TransformError when a stylesheet that has been compiled, with all that it includes and
// imports, breaks one of these rules:
// - instructions of XSLT have the names of version 1.0, unless the version there is another one;
// - formats for numbers that are declared again are equal.
void requireRules(xsltStylesheet* style, TransformErrors const& errors);

} // namespace tibxml::transform
