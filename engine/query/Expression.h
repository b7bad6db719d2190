// The parts of a compiled expression, and how a value of one type is converted to another.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Evaluation.h"

namespace tibxml::query {

// Numbers are IEEE doubles with rules of their own for text and rounding.

/// White space, an optional minus, digits with an optional point, white space; NaN for anything
/// else. What is too large is infinite.
double toNumber(std::string_view text) noexcept;

/// As few digits as tell the number from its neighbours, never an exponent; "NaN", "Infinity",
/// "-Infinity"; both zeros are "0".
void appendNumber(double number, std::string& out);

/// To the nearest integer, halves upwards; from -0.5 up to zero gives -0.
double roundNumber(double number) noexcept;

enum class ValueType : std::uint8_t { nodes, boolean, number, string };

struct AttributeEquals;

/// What an expression is, as far as what stands around it chooses a faster way because of that. It
/// is read when expressions are compiled, never when they are evaluated. A part that the kind does
/// not mention means nothing; the pointers point into the expression.
struct Form {
    enum class Kind : std::uint8_t {
        general,
        number,          // the constant `number`
        string,          // the constant `*string`
        position,        // position()
        last,            // last()
        positionIs,      // position()= the constant `number`
        positionIsLast,  // position()=last()
        attribute,       // @name, by the number that NameResolution gave
        attributeEquals, // @name='value'
    };

    Kind kind = Kind::general;
    double number = 0;
    std::string const* string = nullptr;
    std::uint32_t name = 0;
    AttributeEquals const* attributeEquals = nullptr;
};

/// Every expression has one of four types, known when it is compiled because there are no
/// variables, and can give its value converted to each of the other types that XPath knows.
class Expression {
public:
    Expression(Expression const&) = delete;
    Expression& operator=(Expression const&) = delete;
    virtual ~Expression() = default;

    ValueType type() const noexcept { return type_; }

    virtual Form form() const noexcept { return {}; }

    /// Whether the value depends on the context's position or size.
    bool usesPosition() const noexcept { return usesPosition_; }

    bool usesSize() const noexcept { return usesSize_; }

    virtual bool boolean(Context const& context) const = 0;
    virtual double number(Context const& context) const = 0;

    /// The view points into the expression, into the tree or into `storage`.
    virtual std::string_view string(Context const& context, std::string& storage) const = 0;

protected:
    explicit Expression(ValueType type) noexcept : type_{type} {}

    /// An operand that is evaluated in the same context makes this depend on what it depends on.
    void dependLike(Expression const& operand) noexcept {
        usesPosition_ = usesPosition_ || operand.usesPosition_;
        usesSize_ = usesSize_ || operand.usesSize_;
    }

    void dependOnPosition() noexcept { usesPosition_ = true; }

    void dependOnSize() noexcept { usesSize_ = true; }

private:
    ValueType type_;
    bool usesPosition_ = false;
    bool usesSize_ = false;
};

using ExpressionPtr = std::unique_ptr<Expression const>;

class BooleanExpression : public Expression {
public:
    double number(Context const& context) const final { return boolean(context) ? 1 : 0; }

    std::string_view string(Context const& context, std::string&) const final {
        return boolean(context) ? "true" : "false";
    }

protected:
    BooleanExpression() noexcept : Expression{ValueType::boolean} {}
};

class NumberExpression : public Expression {
public:
    bool boolean(Context const& context) const final;
    std::string_view string(Context const& context, std::string& storage) const final;

protected:
    NumberExpression() noexcept : Expression{ValueType::number} {}
};

class StringExpression : public Expression {
public:
    bool boolean(Context const& context) const final;
    double number(Context const& context) const final;

protected:
    StringExpression() noexcept : Expression{ValueType::string} {}
};

/// The order in which nodes are wanted.
enum class Order : std::uint8_t {
    document,
    any, // for questions whose answer is the same in every order
};

/// What is known beforehand about the nodes that come in document order.
enum class Spread : std::uint8_t {
    single, // at most one
    flat,   // none lies within another
    nested, // no such promise
};

class NodeExpression : public Expression {
public:
    /// Gives the visitor each node once; true when the visitor stopped.
    virtual bool visit(Context const& context, Order order, NodeVisitor visitor) const = 0;

    /// The first in document order, or null.
    virtual tree::Node* first(Context const& context) const;

    virtual Spread spread() const noexcept { return Spread::nested; }

    /// True when there is any.
    bool boolean(Context const& context) const override;

    /// Of the first node.
    double number(Context const& context) const final;
    std::string_view string(Context const& context, std::string& storage) const final;

protected:
    NodeExpression() noexcept : Expression{ValueType::nodes} {}
};

using NodeExpressionPtr = std::unique_ptr<NodeExpression const>;

/// The context node itself, as the default argument of functions.
class ContextNode final : public NodeExpression {
public:
    bool visit(Context const& context, Order, NodeVisitor visitor) const override {
        return visitor(context.node);
    }

    Spread spread() const noexcept override { return Spread::single; }
};

/// No nodes at all.
class NoNodes final : public NodeExpression {
public:
    bool visit(Context const&, Order, NodeVisitor) const override { return false; }

    Spread spread() const noexcept override { return Spread::single; }
};

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
