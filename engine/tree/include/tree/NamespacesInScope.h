// What prefixes mean at an element once its document is written.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <tree/Node.h>

namespace tibxml::tree {

struct NamespaceInScope {
    std::string prefix;   // empty: the default
    std::string_view uri; // of the tree's; never empty
};

// The namespaces that a reader of the written tree finds in scope at an element: by declarations
// that the tree holds, and by those that are added for names which need them. "xml" is one of them.
// In the order of the prefixes' bytes. Throws std::bad_alloc.
std::vector<NamespaceInScope> namespacesInScope(Node const& element);

} // namespace tibxml::tree
