// Location paths, and paths that start at the nodes of another expression.
#pragma once

#include <cstdint>
#include <vector>

#include "Expression.h"
#include "PathPlan.h"
#include "Predicates.h"
#include "Step.h"

namespace tibxml::query {

enum class Origin : std::uint8_t {
    context,
    root, // of the tree that holds the context node
};

class Path final : public NodeExpression {
public:
    Path(Origin origin, std::vector<Step> steps);

    bool visit(Context const& context, Order order, NodeVisitor visitor) const override;

    Spread spread() const noexcept override { return spread_; }

    Form form() const noexcept override;

private:
    PathPlan const& planFor(Order order) const noexcept;
    bool asksForMissingNames(Evaluation const& evaluation) const noexcept;

    Origin origin_;
    std::vector<Step> steps_;
    PathPlan inDocumentOrder_;
    PathPlan inAnyOrder_;
    Spread spread_;
};

/// `(expression)[predicates]/steps`. The positions in the predicates count in document order.
class Filter final : public NodeExpression {
public:
    Filter(NodeExpressionPtr start, Predicates predicates, std::vector<Step> steps);

    bool visit(Context const& context, Order order, NodeVisitor visitor) const override;

    Spread spread() const noexcept override;

private:
    bool visitStart(Context const& context, NodeVisitor visitor) const;
    bool visitStartBySize(Context const& context, NodeVisitor visitor) const;

    NodeExpressionPtr start_;
    Predicates predicates_;
    std::vector<Step> steps_;
};

} // namespace tibxml::query
