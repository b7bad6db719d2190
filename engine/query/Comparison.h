// `=`, `!=`, `<`, `<=`, `>` and `>=`.
#pragma once

#include <cstdint>

#include "Expression.h"

namespace tibxml::query {

enum class Relation : std::uint8_t { equal, notEqual, less, lessOrEqual, greater, greaterOrEqual };

// What the types of the operands decide: with nodes on a side the comparison holds when it holds
// for any of them.
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

// The comparison in the form that answers it fastest: `@k='v'` and `position()=3` need no
// Comparison.
ExpressionPtr makeComparison(Relation relation, ExpressionPtr left, ExpressionPtr right);

} // namespace tibxml::query
