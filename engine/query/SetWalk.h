// Steps from many context nodes at a time, for the axes whose results cannot be given in order one
// by one.
#pragma once

#include "Evaluation.h"
#include "NodeSequence.h"
#include "Step.h"

namespace tibxml::query {

// What a step selects from all context nodes together. Context nodes that can add nothing to what
// others select are passed over, and a sort happens only where the order is not plain already.
NodeSequence walkSet(Step const& step, Evaluation const& evaluation, NodeSequence const& contexts);

// Applies the steps from number `first` on and before `end`, one set after the other, and gives the
// result to the visitor in document order. True when the visitor stopped.
bool walkRest(std::vector<Step> const& steps, std::size_t first, std::size_t end,
              Evaluation const& evaluation, NodeSequence nodes, NodeVisitor visitor);

} // namespace tibxml::query
