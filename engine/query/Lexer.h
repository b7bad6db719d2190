// Cuts an expression into tokens.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include <query/Query.h>

namespace tibxml::query {

enum class TokenKind : std::uint8_t {
    end,
    // Operands
    literal,  // text: between the quotes
    number,   // text: the digits
    name,     // prefix and text
    nameStar, // prefix:*
    star,     // the name test, not the operator
    function, // a name before a parenthesis, node types included
    axis,     // text: the name before ::, which belongs to the token
    dot,
    dotDot,
    at,
    dollar,
    leftParenthesis,
    rightParenthesis,
    leftBracket,
    rightBracket,
    comma,
    // Operators
    slash,
    slashSlash,
    bar,
    plus,
    minus,
    multiply,
    divide,
    modulo,
    equal,
    notEqual,
    less,
    lessOrEqual,
    greater,
    greaterOrEqual,
    logicalAnd,
    logicalOr,
};

constexpr bool isOperator(TokenKind kind) noexcept {
    return kind >= TokenKind::slash;
}

struct Token {
    TokenKind kind = TokenKind::end;
    std::size_t column = 1;   // of the first character
    std::wstring_view text;   // see the kinds; otherwise as written
    std::wstring_view prefix; // of a name, empty when there is none
    std::wstring_view source; // as written
};

class Lexer {
public:
    explicit Lexer(std::wstring_view expression) noexcept : text_{expression} {}

    /// The next token; after the last one always `end`. Throws QueryError for characters
    /// that start no token.
    Token next();

private:
    Token scan();
    Token scanName(std::size_t first);
    Token scanLiteral(std::size_t first);
    Token scanNumber(std::size_t first);
    Token scanSymbol(std::size_t first);
    Token scanStar(std::size_t first);
    Token token(TokenKind kind, std::size_t first) const noexcept;
    TokenKind symbolKind(std::size_t& length) const noexcept;
    bool followsOperand() const noexcept;
    void classifyByWhatFollows(Token& name) noexcept;

    wchar_t peek(std::size_t ahead = 0) const noexcept {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : L'\0';
    }

    void skipBlanks() noexcept;
    void skipNameParts() noexcept;
    void skipDigits() noexcept;

    std::wstring_view text_;
    std::size_t at_ = 0;
    TokenKind previous_ = TokenKind::end; // end: this is the first token
};

/// A piece of the expression for a message, in UTF-8 and in quotes. What is not a character is left
/// out.
std::string quoted(std::wstring_view piece);

} // namespace tibxml::query
