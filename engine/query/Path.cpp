#include "Path.h"

#include <algorithm>
#include <utility>

#include "DepthFirstWalk.h"
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

} // namespace tibxml::query
