// The one extension that stylesheets may use: `node-set`, which turns a result tree fragment into
// nodes.
#pragma once

#include <libxslt/xsltInternals.h>

namespace tibxml::transform {

// For one transformation, under the names of EXSLT and of the platform's own engine. Throws
// std::bad_alloc.
void registerNodeSet(xsltTransformContext& context);

} // namespace tibxml::transform
