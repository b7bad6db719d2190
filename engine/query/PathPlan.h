// How the steps of a path are walked so that nodes come in document order without being sorted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Expression.h"
#include "Step.h"

namespace tibxml::query {

// How a step hands its nodes to the next step.
enum class Handover : std::uint8_t {
    plain,     // one after the other
    outermost, // only those that lie within no other: what the next step finds from the others, it
               // has found already
    grouped,   // those that lie within one another together, since what the next step finds from
               // them is interleaved
};

// The first steps are walked depth first, each node going on to the next step at once; from the
// first step on whose results would not come in order the rest is done set by set.
struct PathPlan {
    std::vector<Handover> handovers; // of the steps walked depth first
    Spread spread = Spread::single;  // of the nodes that those give

    std::size_t depthFirst() const noexcept { return handovers.size(); }
};

// The plan for a path that starts at a single node.
PathPlan planSteps(std::vector<Step> const& steps, Order order);

// Replaces what a path says by something shorter that selects the same: drops `.`, and makes one
// step of `//` and the step behind it.
std::vector<Step> simplified(std::vector<Step> steps);

} // namespace tibxml::query
