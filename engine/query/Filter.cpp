#include "Filter.h"

#include <utility>

#include "PathPlan.h"
#include "SetWalk.h"

namespace tibxml::query {

Filter::Filter(NodeExpressionPtr start, Predicates predicates, std::vector<Step> steps)
    : start_{std::move(start)},
      predicates_{std::move(predicates)},
      steps_{simplified(std::move(steps))} {
    dependLike(*start_);
}

Spread Filter::spread() const noexcept {
    if (!steps_.empty()) return Spread::nested;
    return predicates_.selectsOne() ? Spread::single : start_->spread();
}

bool Filter::visitStartBySize(Context const& context, NodeVisitor visitor) const {
    NodeSequence nodes;
    start_->visit(context, Order::document, [&nodes](tree::Node* node) {
        nodes.nodes.push_back(node);
        return false;
    });
    predicates_.applyTo(nodes.nodes, context.evaluation);
    return walkRest({}, 0, 0, context.evaluation, std::move(nodes), visitor);
}

bool Filter::visitStart(Context const& context, NodeVisitor visitor) const {
    if (predicates_.needsSize()) return visitStartBySize(context, visitor);
    Predicates::Cursor cursor{predicates_};
    bool stopped = false;
    start_->visit(context, Order::document, [&](tree::Node* node) {
        if (cursor.accepts(context.evaluation, node)) stopped = visitor(node);
        return stopped || cursor.exhausted();
    });
    return stopped;
}

bool Filter::visit(Context const& context, Order, NodeVisitor visitor) const {
    if (steps_.empty()) return visitStart(context, visitor);
    NodeSequence nodes{{}, start_->spread() == Spread::nested};
    visitStart(context, [&nodes](tree::Node* node) {
        nodes.nodes.push_back(node);
        return false;
    });
    return walkRest(steps_, 0, steps_.size(), context.evaluation, std::move(nodes), visitor);
}

} // namespace tibxml::query
