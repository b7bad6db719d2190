// How the steps of a path are walked, so that nodes come in document order, each once, and a search
// can stop at the first one.
//
// The obvious way takes a path step by step: all nodes of one step, sorted, are the contexts of the
// next. That holds every set in memory, sorts at each step, and has done nearly all the work when
// the first node comes. So as many steps as possible are walked depth first here: each node goes on
// to the next step at once. The plan finds out, once per expression, how far that keeps the order.
// What it tracks is the kind of stream that comes out of the steps so far:
//
// - single: at most one node. Every axis that goes forward keeps order from there.
// - flat: in order, and none lies within another. `child`, `self` and attributes of such nodes come
//   in order, one context after the other.
// - nested: in order, but some nodes lie within others (`//a`). Children of an outer node and of an
//   inner one are interleaved then, so the step before hands its nodes over in another way: only
//   the outermost ones where the next step goes down as well and finds the rest anyway (`//a//b`);
//   or in groups of a node with all selected nodes within it, since such groups do not overlap
//   (`//a/b`). Most groups have one member. Only real nesting is collected and sorted, group by
//   group.
//
// Invariants: nodes that a depth-first walk gives are in document order unless the plan was made
// for any order, and none comes twice. A reverse axis or a sibling axis from several nodes ends the
// plan; the rest goes on set by set (SetWalk.h). So do steps after the sixteenth, because each step
// walked depth first takes a part of the stack. Where order does not matter (boolean, count,
// comparisons) a second plan lets reverse axes through and needs no groups.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "Expression.h"
#include "SetWalk.h"
#include "Step.h"

namespace tibxml::query {

/// How a step hands its nodes to the next step.
enum class Handover : std::uint8_t {
    plain,     // one after the other
    outermost, // only those that lie within no other: what the next step finds from the others, it
               // has found already
    grouped,   // those that lie within one another together, since what the next step finds from
               // them is interleaved
};

/// The first steps are walked depth first, each node going on to the next step at once; from the
/// first step on whose results would not come in order the rest is done set by set.
struct PathPlan {
    std::vector<Handover> handovers; // of the steps walked depth first
    Spread spread = Spread::single;  // of the nodes that those give

    std::size_t depthFirst() const noexcept { return handovers.size(); }
};

/// The plan for a path that starts at a single node.
PathPlan planSteps(std::vector<Step> const& steps, Order order);

/// Replaces what a path says by something shorter that selects the same: drops `.`, and makes one
/// step of `//` and the step after it.
std::vector<Step> simplified(std::vector<Step> steps);

/// The first steps of a path, walked depth first: each node goes on to the next step before the
/// next node is looked for. The plan says how each step hands its nodes over; see PathPlan.h.
class DepthFirstWalk {
public:
    DepthFirstWalk(std::vector<Step> const& steps, PathPlan const& plan,
                   Evaluation const& evaluation, NodeVisitor visitor) noexcept
        : steps_{steps},
          plan_{plan},
          evaluation_{evaluation},
          visitor_{visitor} {}

    /// Gives the visitor what the planned steps from number `step` on select from a node. True when
    /// the visitor stopped.
    bool from(std::size_t step, tree::Node* node) const;

private:
    bool outermost(std::size_t step, tree::Node* context) const;
    bool grouped(std::size_t step, tree::Node* context) const;
    NodeSequence groupOf(Step const& step, tree::Node* head) const;
    tree::Node* firstDown(Step const& step, tree::Node* context) const;
    tree::Node* accepted(Step const& step, tree::Node* node, tree::Node* context) const;

    std::vector<Step> const& steps_;
    PathPlan const& plan_;
    Evaluation const& evaluation_;
    NodeVisitor visitor_;
};

} // namespace tibxml::query
