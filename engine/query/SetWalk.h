// Steps that are taken from a whole set of context nodes at a time.
//
// This is what is left where a walk depth first cannot keep document order (PathPlan.h): reverse
// axes, and siblings of several nodes. Taking the step from every context node and sorting would be
// right but quadratic: the `following` of n nodes are up to n times the document. So contexts that
// can add nothing are left out first: `following` needs one context, `preceding` the last one, the
// sibling axes one per parent, and ancestors are climbed until one that was seen before. Then these
// axes are linear too, and results are sorted only where the order is not plain already. Steps
// whose predicates count positions need every context.
//
// Invariants: a NodeSequence is in document order and has each node once; `nested` may be true
// without need but is never false when nodes lie within others.
#pragma once

#include <vector>

#include <tree/Document.h>
#include <tree/Node.h>

#include "Evaluation.h"
#include "Step.h"

namespace tibxml::query {

/// Nodes in document order, each once.
struct NodeSequence {
    std::vector<tree::Node*> nodes;
    bool nested = false; // some may lie within others
};

/// Brings nodes of one tree into document order and drops repetitions.
void sortInDocumentOrder(tree::Document& document, std::vector<tree::Node*>& nodes);

/// What a step selects from all context nodes together. Context nodes that can add nothing to what
/// others select are passed over, and a sort happens only where the order is not plain already.
NodeSequence walkSet(Step const& step, Evaluation const& evaluation, NodeSequence const& contexts);

/// Applies the steps from number `first` on and before `end`, one set after the other, and gives
/// the result to the visitor in document order. True when the visitor stopped.
bool walkRest(std::vector<Step> const& steps, std::size_t first, std::size_t end,
              Evaluation const& evaluation, NodeSequence nodes, NodeVisitor visitor);

} // namespace tibxml::query
