#include "Path.h"

#include <algorithm>
#include <utility>

#include "PathPlan.h"
#include "SetWalk.h"

namespace tibxml::query {

namespace {

// A relative path has at least one step.
std::vector<Step> withSelf(Origin origin, std::vector<Step> steps) {
    if (origin == Origin::context && steps.empty()) {
        steps.emplace_back();
        steps.back().axis = Axis::self;
    }
    return steps;
}

} // namespace

Path::Path(Origin origin, std::vector<Step> steps)
    : origin_{origin},
      steps_{withSelf(origin, simplified(std::move(steps)))},
      inDocumentOrder_{planSteps(steps_, Order::document)},
      inAnyOrder_{planSteps(steps_, Order::any)},
      spread_{inDocumentOrder_.depthFirst() == steps_.size() ? inDocumentOrder_.spread
                                                             : Spread::nested} {}

Form Path::form() const noexcept {
    if (origin_ != Origin::context || steps_.size() != 1) return {};
    Step const& step = steps_.front();
    bool const isAttribute = step.axis == Axis::attribute &&
                             step.test.kind == NodeTest::Kind::attributeNamed &&
                             step.predicates.empty();
    return isAttribute ? Form{.kind = Form::Kind::attribute, .name = step.test.name} : Form{};
}

bool Path::asksForMissingNames(Evaluation const& evaluation) const noexcept {
    return std::any_of(steps_.begin(), steps_.end(),
                       [&](Step const& step) { return asksForMissingName(step.test, evaluation); });
}

// Walking set by set needs its contexts in order, so disorder only helps a path that is walked
// depth first to its end.
PathPlan const& Path::planFor(Order order) const noexcept {
    bool const anyOrder = order == Order::any && inAnyOrder_.depthFirst() == steps_.size();
    return anyOrder ? inAnyOrder_ : inDocumentOrder_;
}

bool Path::visit(Context const& context, Order order, NodeVisitor visitor) const {
    Evaluation const& evaluation = context.evaluation;
    if (asksForMissingNames(evaluation)) return false;
    PathPlan const& plan = planFor(order);
    tree::Node* const start = origin_ == Origin::root ? tree::rootOf(context.node) : context.node;
    if (plan.depthFirst() == steps_.size())
        return DepthFirstWalk{steps_, plan, evaluation, visitor}.from(0, start);
    NodeSequence nodes{{}, plan.spread == Spread::nested};
    auto const collect = [&nodes](tree::Node* node) {
        nodes.nodes.push_back(node);
        return false;
    };
    DepthFirstWalk{steps_, plan, evaluation, collect}.from(0, start);
    return walkRest(steps_, plan.depthFirst(), steps_.size(), evaluation, std::move(nodes),
                    visitor);
}

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
