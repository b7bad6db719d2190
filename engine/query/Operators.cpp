#include "Operators.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "SetWalk.h"

namespace tibxml::query {

namespace {

double apply(ArithmeticOperator operation, double left, double right) noexcept {
    switch (operation) {
    case ArithmeticOperator::add: return left + right;
    case ArithmeticOperator::subtract: return left - right;
    case ArithmeticOperator::multiply: return left * right;
    case ArithmeticOperator::divide: return left / right;
    case ArithmeticOperator::modulo: return std::fmod(left, right);
    }
    return left;
}

bool giveSorted(Evaluation const& evaluation, std::vector<tree::Node*> nodes, NodeVisitor visitor) {
    sortInDocumentOrder(evaluation.document, nodes);
    return std::any_of(nodes.begin(), nodes.end(), visitor);
}

} // namespace

Logical::Logical(bool deciding, std::vector<ExpressionPtr> operands) noexcept
    : deciding_{deciding},
      operands_{std::move(operands)} {
    for (ExpressionPtr const& operand : operands_)
        dependLike(*operand);
}

bool Logical::boolean(Context const& context) const {
    for (ExpressionPtr const& operand : operands_)
        if (operand->boolean(context) == deciding_) return deciding_;
    return !deciding_;
}

Arithmetic::Arithmetic(std::vector<Operand> operands) noexcept : operands_{std::move(operands)} {
    for (Operand const& operand : operands_)
        dependLike(*operand.expression);
}

double Arithmetic::number(Context const& context) const {
    double result = operands_.front().expression->number(context);
    for (std::size_t i = 1; i < operands_.size(); ++i)
        result = apply(operands_[i].operation, result, operands_[i].expression->number(context));
    return result;
}

Negation::Negation(bool negative, ExpressionPtr operand) noexcept
    : negative_{negative},
      operand_{std::move(operand)} {
    dependLike(*operand_);
}

double Negation::number(Context const& context) const {
    double const value = operand_->number(context);
    return negative_ ? -value : value;
}

Union::Union(std::vector<NodeExpressionPtr> operands) noexcept : operands_{std::move(operands)} {
    for (NodeExpressionPtr const& operand : operands_)
        dependLike(*operand);
}

bool Union::visit(Context const& context, Order, NodeVisitor visitor) const {
    std::vector<tree::Node*> nodes;
    for (NodeExpressionPtr const& operand : operands_) {
        operand->visit(context, Order::any, [&nodes](tree::Node* node) {
            nodes.push_back(node);
            return false;
        });
    }
    return giveSorted(context.evaluation, std::move(nodes), visitor);
}

// The first of all is the first of one operand, and each operand stops at its own.
tree::Node* Union::first(Context const& context) const {
    std::vector<tree::Node*> candidates;
    for (NodeExpressionPtr const& operand : operands_)
        if (tree::Node* node = operand->first(context)) candidates.push_back(node);
    sortInDocumentOrder(context.evaluation.document, candidates);
    return candidates.empty() ? nullptr : candidates.front();
}

bool Union::boolean(Context const& context) const {
    return std::any_of(operands_.begin(), operands_.end(),
                       [&context](NodeExpressionPtr const& o) { return o->boolean(context); });
}

} // namespace tibxml::query
