#include "ComparisonForms.h"

#include <utility>

#include "AttributeEquals.h"
#include "Constants.h"
#include "ContextFunctions.h"
#include "Path.h"

namespace tibxml::query {

namespace {

// The step `@name` when the expression is nothing else.
Step const* attributeStep(Expression const& expression) noexcept {
    auto const* path = dynamic_cast<Path const*>(&expression);
    Step const* const step = path != nullptr ? path->singleStep() : nullptr;
    bool const plain = step != nullptr && step->axis == Axis::attribute &&
                       step->test.kind == NodeTest::Kind::attributeNamed &&
                       step->predicates.empty();
    return plain ? step : nullptr;
}

ExpressionPtr attributeEquals(Expression const& left, Expression const& right) {
    Step const* const step = attributeStep(left);
    auto const* value = dynamic_cast<StringConstant const*>(&right);
    if (step == nullptr || value == nullptr) return nullptr;
    return std::make_unique<AttributeEquals>(step->test.name, value->value());
}

// `position()=3` and `position()=last()`.
ExpressionPtr positionIs(ExpressionPtr& left, ExpressionPtr& right) {
    if (dynamic_cast<Position const*>(left.get()) == nullptr) return nullptr;
    bool const known = dynamic_cast<NumberConstant const*>(right.get()) != nullptr ||
                       dynamic_cast<Last const*>(right.get()) != nullptr;
    return known ? std::make_unique<PositionIs>(std::move(right)) : nullptr;
}

} // namespace

ExpressionPtr makeComparison(Relation relation, ExpressionPtr left, ExpressionPtr right) {
    if (relation == Relation::equal) {
        if (ExpressionPtr form = attributeEquals(*left, *right)) return form;
        if (ExpressionPtr form = attributeEquals(*right, *left)) return form;
        if (ExpressionPtr form = positionIs(left, right)) return form;
        if (ExpressionPtr form = positionIs(right, left)) return form;
    }
    return std::make_unique<Comparison>(relation, std::move(left), std::move(right));
}

} // namespace tibxml::query
