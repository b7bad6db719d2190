#include "Operators.h"

#include <cmath>
#include <limits>
#include <unordered_set>
#include <utility>

#include <tree/Text.h>

#include "AttributeIndex.h"

namespace tibxml::query {

namespace {

bool holds(Relation relation, double left, double right) noexcept {
    switch (relation) {
    case Relation::equal: return left == right;
    case Relation::notEqual: return left != right;
    case Relation::less: return left < right;
    case Relation::lessOrEqual: return left <= right;
    case Relation::greater: return left > right;
    case Relation::greaterOrEqual: return left >= right;
    }
    return false;
}

// The relation that holds with the operands exchanged.
Relation mirrored(Relation relation) noexcept {
    switch (relation) {
    case Relation::less: return Relation::greater;
    case Relation::lessOrEqual: return Relation::greaterOrEqual;
    case Relation::greater: return Relation::less;
    case Relation::greaterOrEqual: return Relation::lessOrEqual;
    default: return relation;
    }
}

bool isGreater(Relation relation) noexcept {
    return relation == Relation::greater || relation == Relation::greaterOrEqual;
}

// Some node has this string.
bool anyHas(Context const& context, NodeExpression const& nodes, std::string_view value) {
    std::string storage;
    return nodes.visit(context, Order::any,
                       [&](tree::Node* node) { return tree::stringValue(node, storage) == value; });
}

tree::Node* anyNode(Context const& context, NodeExpression const& nodes) {
    tree::Node* found = nullptr;
    nodes.visit(context, Order::any, [&found](tree::Node* node) {
        found = node;
        return true;
    });
    return found;
}

bool singleEquals(Context const& context, NodeExpression const& single,
                  NodeExpression const& others) {
    std::string storage;
    tree::Node const* const node = anyNode(context, single);
    return node != nullptr && anyHas(context, others, tree::stringValue(node, storage));
}

// Some string on the left equals some string on the right. One pass over each side.
bool anyEqual(Context const& context, NodeExpression const& left, NodeExpression const& right) {
    if (left.spread() == Spread::single) return singleEquals(context, left, right);
    if (right.spread() == Spread::single) return singleEquals(context, right, left);
    std::unordered_set<std::string> values;
    std::string storage;
    left.visit(context, Order::any, [&](tree::Node* node) {
        values.emplace(tree::stringValue(node, storage));
        return false;
    });
    if (values.empty()) return false;
    return right.visit(context, Order::any, [&](tree::Node* node) {
        return values.count(std::string{tree::stringValue(node, storage)}) != 0;
    });
}

// Some string on the left differs from some string on the right: unless all are the same.
bool anyDifferent(Context const& context, NodeExpression const& left, NodeExpression const& right) {
    tree::Node const* const one = anyNode(context, left);
    if (one == nullptr || !right.boolean(context)) return false;
    std::string storage;
    std::string otherStorage;
    std::string_view const value = tree::stringValue(one, storage);
    auto const differs = [&](tree::Node* node) {
        return tree::stringValue(node, otherStorage) != value;
    };
    return left.visit(context, Order::any, differs) || right.visit(context, Order::any, differs);
}

// The largest or the smallest of the nodes' numbers, NaN left out; NaN when none is left.
double extreme(Context const& context, NodeExpression const& nodes, bool largest) {
    double result = std::numeric_limits<double>::quiet_NaN();
    std::string storage;
    nodes.visit(context, Order::any, [&](tree::Node* node) {
        double const value = toNumber(tree::stringValue(node, storage));
        bool const better = largest ? !(value <= result) : !(value >= result);
        if (!std::isnan(value) && better) result = value;
        return false;
    });
    return result;
}

// `@k='v'`
class AttributeComparison final : public BooleanExpression {
public:
    AttributeComparison(std::uint32_t name, std::string value) noexcept
        : comparison_{name, std::move(value)} {}

    Form form() const noexcept override {
        return {.kind = Form::Kind::attributeEquals, .attributeEquals = &comparison_};
    }

    bool boolean(Context const& context) const override {
        return comparison_.holds(context.evaluation, context.node);
    }

private:
    AttributeEquals comparison_;
};

// `position()=3`, which as a predicate is the same as 3.
class PositionIs final : public BooleanExpression {
public:
    explicit PositionIs(double position) noexcept : position_{position} { dependOnPosition(); }

    Form form() const noexcept override {
        return {.kind = Form::Kind::positionIs, .number = position_};
    }

    bool boolean(Context const& context) const override {
        return static_cast<double>(context.position) == position_;
    }

private:
    double position_;
};

// `position()=last()`, which as a predicate is the same as last().
class PositionIsLast final : public BooleanExpression {
public:
    PositionIsLast() noexcept {
        dependOnPosition();
        dependOnSize();
    }

    Form form() const noexcept override { return {.kind = Form::Kind::positionIsLast}; }

    bool boolean(Context const& context) const override { return context.position == context.size; }
};

// Null when no form is faster with the operands in this order.
ExpressionPtr fasterEquality(Form const& left, Form const& right) {
    using Kind = Form::Kind;
    if (left.kind == Kind::attribute && right.kind == Kind::string)
        return std::make_unique<AttributeComparison>(left.name, *right.string);
    if (left.kind != Kind::position) return nullptr;
    if (right.kind == Kind::number) return std::make_unique<PositionIs>(right.number);
    if (right.kind == Kind::last) return std::make_unique<PositionIsLast>();
    return nullptr;
}

} // namespace

Comparison::Comparison(Relation relation, ExpressionPtr left, ExpressionPtr right) noexcept
    : relation_{relation},
      left_{std::move(left)},
      right_{std::move(right)} {
    if (left_->type() != ValueType::nodes && right_->type() == ValueType::nodes) {
        left_.swap(right_);
        relation_ = mirrored(relation_);
    }
    method_ = methodFor(left_->type(), right_->type());
    dependLike(*left_);
    dependLike(*right_);
}

bool Comparison::comparesEquality() const noexcept {
    return relation_ == Relation::equal || relation_ == Relation::notEqual;
}

Comparison::Method Comparison::methodFor(ValueType left, ValueType right) const noexcept {
    auto const either = [&](ValueType type) { return left == type || right == type; };
    if (left == ValueType::nodes && right == ValueType::nodes) return Method::nodesWithNodes;
    if (either(ValueType::boolean) && (comparesEquality() || left == ValueType::nodes))
        return Method::booleans;
    if (left == ValueType::nodes) {
        return right == ValueType::string && comparesEquality() ? Method::nodesWithString
                                                                : Method::nodesWithNumber;
    }
    if (either(ValueType::number) || !comparesEquality()) return Method::numbers;
    return Method::strings;
}

bool Comparison::boolean(Context const& context) const {
    switch (method_) {
    case Method::booleans:
        return holds(relation_, left_->boolean(context) ? 1 : 0, right_->boolean(context) ? 1 : 0);
    case Method::numbers: return holds(relation_, left_->number(context), right_->number(context));
    case Method::strings: return compareStrings(context);
    case Method::nodesWithString: return compareNodesWithString(context);
    case Method::nodesWithNumber: return compareNodesWithNumber(context);
    case Method::nodesWithNodes: return compareNodesWithNodes(context);
    }
    return false;
}

NodeExpression const& Comparison::nodes(ExpressionPtr const& operand) const noexcept {
    return static_cast<NodeExpression const&>(*operand);
}

bool Comparison::compareStrings(Context const& context) const {
    std::string leftStorage;
    std::string rightStorage;
    bool const same = left_->string(context, leftStorage) == right_->string(context, rightStorage);
    return same == (relation_ == Relation::equal);
}

bool Comparison::compareNodesWithString(Context const& context) const {
    std::string storage;
    std::string nodeStorage;
    std::string_view const wanted = right_->string(context, storage);
    bool const wantsEqual = relation_ == Relation::equal;
    return nodes(left_).visit(context, Order::any, [&](tree::Node* node) {
        return (tree::stringValue(node, nodeStorage) == wanted) == wantsEqual;
    });
}

bool Comparison::compareNodesWithNumber(Context const& context) const {
    std::string storage;
    double const number = right_->number(context);
    return nodes(left_).visit(context, Order::any, [&](tree::Node* node) {
        return holds(relation_, toNumber(tree::stringValue(node, storage)), number);
    });
}

bool Comparison::compareNodesWithNodes(Context const& context) const {
    NodeExpression const& left = nodes(left_);
    NodeExpression const& right = nodes(right_);
    if (relation_ == Relation::equal) return anyEqual(context, left, right);
    if (relation_ == Relation::notEqual) return anyDifferent(context, left, right);
    bool const largest = isGreater(relation_);
    return holds(relation_, extreme(context, left, largest), extreme(context, right, !largest));
}

ExpressionPtr makeComparison(Relation relation, ExpressionPtr left, ExpressionPtr right) {
    if (relation == Relation::equal) {
        if (ExpressionPtr faster = fasterEquality(left->form(), right->form())) return faster;
        if (ExpressionPtr faster = fasterEquality(right->form(), left->form())) return faster;
    }
    return std::make_unique<Comparison>(relation, std::move(left), std::move(right));
}

} // namespace tibxml::query
