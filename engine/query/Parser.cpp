#include "Parser.h"

#include <utility>

#include <TibXml/platform/Utf.h>
#include <tree/Name.h>

#include "Operators.h"

namespace tibxml::query {

namespace {

struct RelationToken {
    TokenKind kind;
    Relation relation;
    bool equality;
};

constexpr RelationToken relationTokens[] = {
    {TokenKind::equal, Relation::equal, true},
    {TokenKind::notEqual, Relation::notEqual, true},
    {TokenKind::less, Relation::less, false},
    {TokenKind::lessOrEqual, Relation::lessOrEqual, false},
    {TokenKind::greater, Relation::greater, false},
    {TokenKind::greaterOrEqual, Relation::greaterOrEqual, false},
};

RelationToken const* relationOf(TokenKind kind, bool equality) noexcept {
    for (RelationToken const& entry : relationTokens)
        if (entry.kind == kind && entry.equality == equality) return &entry;
    return nullptr;
}

struct ArithmeticToken {
    TokenKind kind;
    ArithmeticOperator operation;
    bool additive;
};

constexpr ArithmeticToken arithmeticTokens[] = {
    {TokenKind::plus, ArithmeticOperator::add, true},
    {TokenKind::minus, ArithmeticOperator::subtract, true},
    {TokenKind::multiply, ArithmeticOperator::multiply, false},
    {TokenKind::divide, ArithmeticOperator::divide, false},
    {TokenKind::modulo, ArithmeticOperator::modulo, false},
};

ArithmeticToken const* arithmeticOf(TokenKind kind, bool additive) noexcept {
    for (ArithmeticToken const& entry : arithmeticTokens)
        if (entry.kind == kind && entry.additive == additive) return &entry;
    return nullptr;
}

std::string plural(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " argument" : " arguments");
}

std::string allowedCount(Function const& function) {
    if (function.fewest == function.most)
        return function.most == 0 ? "no arguments" : plural(function.most);
    if (function.most == anyNumber) return "at least " + plural(function.fewest);
    if (function.fewest == 0) return "at most " + plural(function.most);
    return std::to_string(function.fewest) + " to " + plural(function.most);
}

} // namespace

char const* nameOf(ValueType type) noexcept {
    switch (type) {
    case ValueType::nodes: return "nodes";
    case ValueType::boolean: return "a boolean";
    case ValueType::number: return "a number";
    case ValueType::string: return "a string";
    }
    return "";
}

NodeExpressionPtr asNodes(ExpressionPtr expression) noexcept {
    return NodeExpressionPtr{static_cast<NodeExpression const*>(expression.release())};
}

Parser::Parser(std::wstring_view expression, Namespaces const& namespaces, NameResolution& names)
    : lexer_{expression},
      namespaces_{namespaces},
      names_{names} {
    advance();
}

NodeExpressionPtr Parser::parse() {
    std::size_t const column = token_.column;
    ExpressionPtr expression = parseExpression();
    if (!at(TokenKind::end)) fail("unexpected " + quoted(token_.source));
    if (expression->type() != ValueType::nodes) {
        throw QueryError{column, std::string{"the expression gives "} + nameOf(expression->type()) +
                                     ", not nodes"};
    }
    return asNodes(std::move(expression));
}

bool Parser::skip(TokenKind kind) {
    if (!at(kind)) return false;
    advance();
    return true;
}

void Parser::expect(TokenKind kind, char const* spelling) {
    if (!skip(kind)) failExpecting(spelling);
}

void Parser::fail(std::string const& fault) const {
    throw QueryError{token_.column, fault};
}

void Parser::failExpecting(char const* what) const {
    fail(std::string{"expected "} + what);
}

std::string Parser::narrow(std::wstring_view text) const {
    std::string result;
    if (!platform::appendUtf8(result, text)) fail("not a character");
    return result;
}

ExpressionPtr Parser::parseExpression() {
    Nesting const nesting{*this};
    return parseOr();
}

ExpressionPtr Parser::parseLogical(TokenKind kind, ExpressionPtr (Parser::*operand)()) {
    std::vector<ExpressionPtr> operands;
    do {
        operands.push_back((this->*operand)());
    } while (skip(kind));
    if (operands.size() == 1) return std::move(operands.front());
    return std::make_unique<Logical>(kind == TokenKind::logicalOr, std::move(operands));
}

ExpressionPtr Parser::parseOr() {
    return parseLogical(TokenKind::logicalOr, &Parser::parseAnd);
}

ExpressionPtr Parser::parseAnd() {
    return parseLogical(TokenKind::logicalAnd, &Parser::parseEquality);
}

ExpressionPtr Parser::parseEquality() {
    return parseComparisons(true);
}

ExpressionPtr Parser::parseRelational() {
    return parseComparisons(false);
}

// Comparisons nest to the left; chains of them make little sense, so all together have a limit.
ExpressionPtr Parser::parseComparisons(bool equality) {
    auto const operand = [&] { return equality ? parseRelational() : parseArithmetic(true); };
    ExpressionPtr left = operand();
    for (bool first = true; auto const* entry = relationOf(token_.kind, equality); first = false) {
        if (!first && ++comparisonLinks_ > deepest) fail("too many comparisons in a row");
        advance();
        left = makeComparison(entry->relation, std::move(left), operand());
    }
    return left;
}

ExpressionPtr Parser::parseArithmetic(bool additive) {
    auto const operand = [&] { return additive ? parseArithmetic(false) : parseUnary(); };
    std::vector<Arithmetic::Operand> operands;
    operands.push_back({ArithmeticOperator::add, operand()});
    while (auto const* entry = arithmeticOf(token_.kind, additive)) {
        advance();
        operands.push_back({entry->operation, operand()});
    }
    if (operands.size() == 1) return std::move(operands.front().expression);
    return std::make_unique<Arithmetic>(std::move(operands));
}

ExpressionPtr Parser::parseUnary() {
    if (!at(TokenKind::minus)) return parseUnion();
    bool negative = false;
    while (skip(TokenKind::minus))
        negative = !negative;
    return std::make_unique<Negation>(negative, parseUnion());
}

ExpressionPtr Parser::parseUnion() {
    std::size_t column = token_.column;
    ExpressionPtr first = parsePath();
    if (!at(TokenKind::bar)) return first;
    std::vector<NodeExpressionPtr> operands;
    for (ExpressionPtr operand = std::move(first);; operand = parsePath()) {
        if (operand->type() != ValueType::nodes) {
            throw QueryError{column,
                             std::string{"'|' takes nodes, not "} + nameOf(operand->type())};
        }
        operands.push_back(asNodes(std::move(operand)));
        if (!skip(TokenKind::bar)) break;
        column = token_.column;
    }
    return std::make_unique<Union>(std::move(operands));
}

bool Parser::startsPrimary() const noexcept {
    switch (token_.kind) {
    case TokenKind::literal:
    case TokenKind::number:
    case TokenKind::dollar:
    case TokenKind::leftParenthesis: return true;
    case TokenKind::function: return !isNodeType(token_);
    default: return false;
    }
}

ExpressionPtr Parser::parsePrimary() {
    switch (token_.kind) {
    case TokenKind::literal: return parseLiteral();
    case TokenKind::number: return parseNumber();
    case TokenKind::leftParenthesis: return parseParenthesised();
    case TokenKind::dollar: fail("there are no variables");
    default: return parseCall();
    }
}

ExpressionPtr Parser::parseParenthesised() {
    advance();
    ExpressionPtr inner = parseExpression();
    expect(TokenKind::rightParenthesis, "')'");
    return inner;
}

ExpressionPtr Parser::parseLiteral() {
    auto literal = std::make_unique<StringConstant>(narrow(token_.text));
    advance();
    return literal;
}

ExpressionPtr Parser::parseNumber() {
    auto number = std::make_unique<NumberConstant>(toNumber(narrow(token_.text)));
    advance();
    return number;
}

ExpressionPtr Parser::parseCall() {
    std::size_t const column = token_.column;
    Function const* function = token_.prefix.empty() ? findFunction(narrow(token_.text)) : nullptr;
    if (function == nullptr) fail("unknown function " + quoted(token_.source));
    advance();
    Arguments arguments = parseArguments();
    checkArguments(*function, arguments, column);
    std::uint32_t xmlLang = 0;
    if (function->special == Function::Special::lang)
        xmlLang = names_.add(std::string{tree::xmlNamespace}, "lang");
    return makeCall(*function, std::move(arguments), xmlLang);
}

Arguments Parser::parseArguments() {
    Arguments arguments;
    expect(TokenKind::leftParenthesis, "'('");
    if (skip(TokenKind::rightParenthesis)) return arguments;
    do {
        arguments.push_back(parseExpression());
    } while (skip(TokenKind::comma));
    expect(TokenKind::rightParenthesis, "')'");
    return arguments;
}

void Parser::checkArguments(Function const& function, Arguments const& arguments,
                            std::size_t column) const {
    std::string const name{function.name};
    if (arguments.size() < function.fewest || arguments.size() > function.most)
        throw QueryError{column, name + "() takes " + allowedCount(function)};
    bool const needsNodes = function.takesNodes && !arguments.empty();
    if (needsNodes && arguments.front()->type() != ValueType::nodes)
        throw QueryError{column, name + "() takes nodes, not " + nameOf(arguments.front()->type())};
}

} // namespace tibxml::query
