// The words of an expression.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tibxml::query {

enum class TokenKind : std::uint8_t {
    end,
    // Operands
    literal,  // text: between the quotes
    number,   // text: the digits
    name,     // prefix and text
    nameStar, // prefix:*
    star,     // the name test, not the operator
    function, // a name with a parenthesis behind it, node types included
    axis,     // text: the name in front of ::, which belongs to the token
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

} // namespace tibxml::query
