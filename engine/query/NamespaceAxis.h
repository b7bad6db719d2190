// The namespace axis.
#pragma once

#include <vector>

#include <tree/Document.h>

namespace tibxml::query {

// The nodes for the namespaces in scope of an element, in the order of the prefixes' bytes; none
// for other nodes. They stay until NamespaceNodes::sweep. Throws std::bad_alloc.
std::vector<tree::Node*> namespaceNodes(tree::Document& document, tree::Node* element);

} // namespace tibxml::query
