// Functions that look at the context itself.
#pragma once

#include <cstdint>
#include <utility>

#include "Expression.h"

namespace tibxml::query {

class Position final : public NumberExpression {
public:
    Position() noexcept { dependOnPosition(); }

    Form form() const noexcept override { return {.kind = Form::Kind::position}; }

    double number(Context const& context) const override {
        return static_cast<double>(context.position);
    }
};

class Last final : public NumberExpression {
public:
    Last() noexcept { dependOnSize(); }

    Form form() const noexcept override { return {.kind = Form::Kind::last}; }

    double number(Context const& context) const override {
        return static_cast<double>(context.size);
    }
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
