#include <utility>

#include "Constants.h"
#include "Numbers.h"
#include "Parser.h"

#include <tree/Name.h>

namespace tibxml::query {

namespace {

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
