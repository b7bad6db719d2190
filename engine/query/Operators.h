// `and`, `or`, arithmetic and `|`. Chains such as `a or b or c` are one expression with many
// operands, so that long ones need no deep recursion. Comparisons are in Comparison.h.
#pragma once

#include <cstdint>
#include <vector>

#include "Expression.h"

namespace tibxml::query {

// `and` and `or`: the first operand that decides ends it.
class Logical final : public BooleanExpression {
public:
    // An operand with the value `deciding` decides: true for `or`, false for `and`.
    Logical(bool deciding, std::vector<ExpressionPtr> operands) noexcept;

    bool boolean(Context const& context) const override;

private:
    bool deciding_;
    std::vector<ExpressionPtr> operands_;
};

enum class ArithmeticOperator : std::uint8_t { add, subtract, multiply, divide, modulo };

// Operators of one rank, applied from left to right.
class Arithmetic final : public NumberExpression {
public:
    struct Operand {
        ArithmeticOperator operation; // add for the first
        ExpressionPtr expression;
    };

    explicit Arithmetic(std::vector<Operand> operands) noexcept;

    double number(Context const& context) const override;

private:
    std::vector<Operand> operands_;
};

// Any number of minus signs.
class Negation final : public NumberExpression {
public:
    Negation(bool negative, ExpressionPtr operand) noexcept;

    double number(Context const& context) const override;

private:
    bool negative_; // false when the signs cancel out and only the conversion to a number is left
    ExpressionPtr operand_;
};

// `a|b|c`
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
