#include "NodeSequence.h"

#include <algorithm>

#include <tree/DocumentOrder.h>

namespace tibxml::query {

void sortInDocumentOrder(tree::Document& document, std::vector<tree::Node*>& nodes) {
    if (nodes.size() < 2) return;
    tree::ensureOrder(document, nodes.front());
    if (!std::is_sorted(nodes.begin(), nodes.end(), tree::comesBefore))
        std::sort(nodes.begin(), nodes.end(), tree::comesBefore);
    nodes.erase(std::unique(nodes.begin(), nodes.end()), nodes.end());
}

} // namespace tibxml::query
