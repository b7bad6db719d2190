// The first steps of a path, walked depth first.
#pragma once

#include <cstddef>
#include <vector>

#include "NodeSequence.h"
#include "PathPlan.h"

namespace tibxml::query {

class DepthFirstWalk {
public:
    DepthFirstWalk(std::vector<Step> const& steps, PathPlan const& plan,
                   Evaluation const& evaluation, NodeVisitor visitor) noexcept
        : steps_{steps},
          plan_{plan},
          evaluation_{evaluation},
          visitor_{visitor} {}

    // Gives the visitor what the planned steps from number `step` on select from a node. True when
    // the visitor stopped.
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
