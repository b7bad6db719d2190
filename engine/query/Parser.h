// The grammar: from tokens to the parts of a compiled expression, by recursive descent.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <query/Namespaces.h>
#include <query/Query.h>

#include "Evaluation.h"
#include "Expression.h"
#include "Functions.h"
#include "Lexer.h"
#include "Path.h"

namespace tibxml::query {

class Parser {
public:
    /// Names in the expression are added to `names`.
    Parser(std::wstring_view expression, Namespaces const& namespaces, NameResolution& names);

    /// The whole text as an expression that gives nodes. Throws QueryError.
    NodeExpressionPtr parse();

private:
    // So many brackets and parentheses may stand within one another, because each takes a part of
    // the stack here and when the query runs.
    static constexpr std::size_t deepest = 256;

    class Nesting;

    // Tokens (Parser.cpp)
    void advance() { token_ = lexer_.next(); }

    bool at(TokenKind kind) const noexcept { return token_.kind == kind; }

    bool skip(TokenKind kind);
    void expect(TokenKind kind, char const* spelling);
    [[noreturn]] void fail(std::string const& fault) const;
    [[noreturn]] void failExpecting(char const* what) const;
    std::string narrow(std::wstring_view text) const;

    // Operators, from the loosest to the tightest (Parser.cpp)
    ExpressionPtr parseExpression();
    ExpressionPtr parseLogical(TokenKind kind, ExpressionPtr (Parser::*operand)());
    ExpressionPtr parseOr();
    ExpressionPtr parseAnd();
    ExpressionPtr parseComparisons(bool equality);
    ExpressionPtr parseEquality();
    ExpressionPtr parseRelational();
    ExpressionPtr parseArithmetic(bool additive);
    ExpressionPtr parseUnary();
    ExpressionPtr parseUnion();

    // Paths (ParserPaths.cpp)
    ExpressionPtr parsePath();
    ExpressionPtr parseFilter();
    ExpressionPtr parseLocationPath();
    bool startsStep() const noexcept;
    void parseSteps(std::vector<Step>& steps);
    void parseTail(std::vector<Step>& steps);
    Step parseStep();
    void parsePredicates(Predicates& predicates);
    Axis parseAxis();
    NodeTest parseNodeTest(Axis axis);
    NodeTest parseNodeType();
    NodeTest parseNameTest(Axis axis);
    std::string uriOf(std::wstring_view prefix) const;

    // What paths may start with (Parser.cpp)
    bool startsPrimary() const noexcept;
    ExpressionPtr parsePrimary();
    ExpressionPtr parseParenthesised();
    ExpressionPtr parseLiteral();
    ExpressionPtr parseNumber();
    ExpressionPtr parseCall();
    Arguments parseArguments();
    void checkArguments(Function const& function, Arguments const& arguments,
                        std::size_t column) const;

    Lexer lexer_;
    Token token_;
    Namespaces const& namespaces_;
    NameResolution& names_;
    std::size_t depth_ = 0;
    std::size_t comparisonLinks_ = 0;
};

/// Counts how deep the parser is for as long as it lives.
class Parser::Nesting {
public:
    explicit Nesting(Parser& parser) : parser_{parser} {
        if (parser_.depth_ == deepest) parser_.fail("nested too deeply");
        ++parser_.depth_;
    }

    Nesting(Nesting const&) = delete;
    Nesting& operator=(Nesting const&) = delete;

    ~Nesting() { --parser_.depth_; }

private:
    Parser& parser_;
};

/// The name of a type in messages.
char const* nameOf(ValueType type) noexcept;

/// The node types are names that no function can have.
bool isNodeType(Token const& token) noexcept;

NodeExpressionPtr asNodes(ExpressionPtr expression) noexcept;

} // namespace tibxml::query
