#include <xpath/token_redef.h>

#include <xpath/xpath_stream.h>

namespace TinyXPath {

void token_redef::action(int rule, int alternative, int parts) {
    stream.action(rule, alternative, parts, 0);
}

int token_redef::question(int rule, int alternative, int parts) {
    return stream.question(rule, alternative, parts, 0);
}

} // namespace TinyXPath
