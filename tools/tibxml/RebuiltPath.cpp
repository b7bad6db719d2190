#include "RebuiltPath.h"

namespace tibxml::tool {

// A path that was changed puts its string together from its steps. So does one that was asked for a
// change which came to nothing: no clause is just a "]".
CString rebuilt(WXPath path) {
    path.RemoveFilterClause(L"]");
    return path.ToString();
}

} // namespace tibxml::tool
