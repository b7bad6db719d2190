#include "ComparisonForms.h"

#include <utility>

#include "AttributeEquals.h"

namespace tibxml::query {

namespace {

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

ExpressionPtr makeComparison(Relation relation, ExpressionPtr left, ExpressionPtr right) {
    if (relation == Relation::equal) {
        if (ExpressionPtr faster = fasterEquality(left->form(), right->form())) return faster;
        if (ExpressionPtr faster = fasterEquality(right->form(), left->form())) return faster;
    }
    return std::make_unique<Comparison>(relation, std::move(left), std::move(right));
}

} // namespace tibxml::query
