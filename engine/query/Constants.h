// Literals.
#pragma once

#include <utility>

#include "Expression.h"

namespace tibxml::query {

class NumberConstant final : public NumberExpression {
public:
    explicit NumberConstant(double value) noexcept : value_{value} {}

    Form form() const noexcept override { return {.kind = Form::Kind::number, .number = value_}; }

    double number(Context const&) const override { return value_; }

private:
    double value_;
};

class StringConstant final : public StringExpression {
public:
    explicit StringConstant(std::string value) noexcept : value_{std::move(value)} {}

    Form form() const noexcept override { return {.kind = Form::Kind::string, .string = &value_}; }

    std::string_view string(Context const&, std::string&) const override { return value_; }

private:
    std::string value_;
};

} // namespace tibxml::query
