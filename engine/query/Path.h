// Location paths.
#pragma once

#include <cstdint>
#include <vector>

#include "Expression.h"
#include "PathPlan.h"
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

} // namespace tibxml::query
