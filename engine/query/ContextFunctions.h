// Functions that look at the context itself.
#pragma once

#include <cstdint>
#include <utility>

#include "Expression.h"

namespace tibxml::query {

class Position final : public NumberExpression {
public:
    Position() noexcept { dependOnPosition(); }

    double number(Context const& context) const override {
        return static_cast<double>(context.position);
    }
};

class Last final : public NumberExpression {
public:
    Last() noexcept { dependOnSize(); }

    double number(Context const& context) const override {
        return static_cast<double>(context.size);
    }
};

// `position()=` a number: as a predicate it is the same as that number alone.
class PositionIs final : public BooleanExpression {
public:
    explicit PositionIs(ExpressionPtr number) noexcept : number_{std::move(number)} {
        dependOnPosition();
        dependLike(*number_);
    }

    Expression const& value() const noexcept { return *number_; }

    bool boolean(Context const& context) const override {
        return number_->number(context) == static_cast<double>(context.position);
    }

private:
    ExpressionPtr number_;
};

// Whether the nearest xml:lang around the context node names the language or a dialect of it.
class Lang final : public BooleanExpression {
public:
    Lang(std::uint32_t xmlLang, ExpressionPtr language) noexcept;

    bool boolean(Context const& context) const override;

private:
    std::uint32_t xmlLang_;
    ExpressionPtr language_;
};

} // namespace tibxml::query
