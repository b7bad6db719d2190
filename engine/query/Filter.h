// `(expression)[predicates]/steps`, where positions count in document order.
#pragma once

#include <vector>

#include "Expression.h"
#include "Predicates.h"
#include "Step.h"

namespace tibxml::query {

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
