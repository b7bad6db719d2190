// The operators. Chains such as `a or b or c` are one expression with many operands, so that long
// ones need no deep recursion. Only comparisons are pairs (Comparison.cpp).
#pragma once

#include <cstdint>
#include <vector>

#include "Expression.h"

namespace tibxml::query {

/// `and` and `or`: the first operand that decides ends it.
class Logical final : public BooleanExpression {
public:
    /// An operand with the value `deciding` decides: true for `or`, false for `and`.
    Logical(bool deciding, std::vector<ExpressionPtr> operands) noexcept;

    bool boolean(Context const& context) const override;

private:
    bool deciding_;
    std::vector<ExpressionPtr> operands_;
};

enum class ArithmeticOperator : std::uint8_t { add, subtract, multiply, divide, modulo };

/// Operators of one rank, applied from left to right.
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

/// Any number of minus signs.
class Negation final : public NumberExpression {
public:
    Negation(bool negative, ExpressionPtr operand) noexcept;

    double number(Context const& context) const override;

private:
    bool negative_; // false when the signs cancel out and only the conversion to a number is left
    ExpressionPtr operand_;
};

/// `a|b|c`
class Union final : public NodeExpression {
public:
    explicit Union(std::vector<NodeExpressionPtr> operands) noexcept;

    bool visit(Context const& context, Order order, NodeVisitor visitor) const override;
    tree::Node* first(Context const& context) const override;
    bool boolean(Context const& context) const override;

private:
    std::vector<NodeExpressionPtr> operands_;
};

/// `=`, `!=`, `<`, `<=`, `>` and `>=`.
enum class Relation : std::uint8_t { equal, notEqual, less, lessOrEqual, greater, greaterOrEqual };

/// What the types of the operands decide: with nodes on a side the comparison holds when it holds
/// for any of them.
class Comparison final : public BooleanExpression {
public:
    Comparison(Relation relation, ExpressionPtr left, ExpressionPtr right) noexcept;

    bool boolean(Context const& context) const override;

private:
    enum class Method : std::uint8_t {
        booleans,
        numbers,
        strings,
        nodesWithString,
        nodesWithNumber,
        nodesWithNodes,
    };

    Method methodFor(ValueType left, ValueType right) const noexcept;
    bool comparesEquality() const noexcept;
    NodeExpression const& nodes(ExpressionPtr const& operand) const noexcept;
    bool compareStrings(Context const& context) const;
    bool compareNodesWithString(Context const& context) const;
    bool compareNodesWithNumber(Context const& context) const;
    bool compareNodesWithNodes(Context const& context) const;

    Relation relation_;
    ExpressionPtr left_;
    ExpressionPtr right_;
    Method method_;
};

/// The comparison in the form that answers it fastest: `@k='v'` and `position()=3` need no
/// Comparison.
ExpressionPtr makeComparison(Relation relation, ExpressionPtr left, ExpressionPtr right);

} // namespace tibxml::query
