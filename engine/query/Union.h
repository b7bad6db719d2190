// `a|b|c`.
#pragma once

#include <vector>

#include "Expression.h"

namespace tibxml::query {

class Union final : public NodeExpression {
public:
    explicit Union(std::vector<NodeExpressionPtr> operands) noexcept;

    bool visit(Context const& context, Order order, NodeVisitor visitor) const override;
    tree::Node* first(Context const& context) const override;
    bool boolean(Context const& context) const override;

private:
    std::vector<NodeExpressionPtr> operands_;
};

} // namespace tibxml::query
