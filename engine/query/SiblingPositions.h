// `//a[1]`: steps over all descendants whose predicates count positions among siblings.
#pragma once

#include "Step.h"

namespace tibxml::query {

// Gives, in document order, every descendant of the context node that the step selects as a child
// of its parent. True when the visitor stopped.
bool walkBySiblingPositions(Step const& step, Evaluation const& evaluation, tree::Node* context,
                            NodeVisitor visitor);

} // namespace tibxml::query
