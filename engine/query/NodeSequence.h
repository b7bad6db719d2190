// Nodes in document order, each once.
#pragma once

#include <vector>

#include <tree/Document.h>
#include <tree/Node.h>

namespace tibxml::query {

struct NodeSequence {
    std::vector<tree::Node*> nodes;
    bool nested = false; // some may lie within others
};

// Brings nodes of one tree into document order and drops repetitions.
void sortInDocumentOrder(tree::Document& document, std::vector<tree::Node*>& nodes);

} // namespace tibxml::query
