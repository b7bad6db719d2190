#include "NamespaceAxis.h"

#include <tree/NamespaceNodes.h>
#include <tree/NamespacesInScope.h>

namespace tibxml::query {

std::vector<tree::Node*> namespaceNodes(tree::Document& document, tree::Node* element) {
    std::vector<tree::Node*> nodes;
    if (!element->is(tree::NodeKind::element)) return nodes;
    for (tree::NamespaceInScope const& space : tree::namespacesInScope(*element))
        nodes.push_back(tree::NamespaceNodes::get(document, element, space.prefix, space.uri));
    return nodes;
}

} // namespace tibxml::query
