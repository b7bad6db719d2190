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

// The nodes of all operands. What several operands give is dropped before it piles up: up to the
// last operand there are at most eight times as many nodes as the largest operand gave, or four
// times as many as there were different ones. So memory depends on the result and not on the number
// of operands, and unions of few operands are sorted once.
class GatheredNodes {
public:
    explicit GatheredNodes(Context const& context) noexcept : context_{context} {}

    void add(NodeExpression const& operand) {
        std::size_t const before = nodes_.size();
        operand.visit(context_, Order::any, [this](tree::Node* node) {
            nodes_.push_back(node);
            return false;
        });
        limit_ = std::max(limit_, 8 * (nodes_.size() - before));
        if (nodes_.size() <= limit_) return;
        sort();
        limit_ = std::max(limit_, 4 * nodes_.size());
    }

    bool giveSorted(NodeVisitor visitor) {
        sort();
        return std::any_of(nodes_.begin(), nodes_.end(), visitor);
    }

private:
    void sort() { sortInDocumentOrder(context_.evaluation.document, nodes_); }

    Context const& context_;
    std::vector<tree::Node*> nodes_;
    std::size_t limit_ = 0;
};

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
    GatheredNodes nodes{context};
    for (NodeExpressionPtr const& operand : operands_)
        nodes.add(*operand);
    return nodes.giveSorted(visitor);
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
