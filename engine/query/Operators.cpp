#include "Operators.h"

#include <cmath>
#include <utility>

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

} // namespace tibxml::query
