#include "Lexer.h"

#include <TibXml/platform/Utf.h>
#include <tree/Text.h>

namespace tibxml::query {

std::string quoted(std::wstring_view piece) {
    constexpr std::size_t longest = 40;
    std::string text{"'"};
    for (wchar_t const& character : piece.substr(0, longest))
        platform::appendUtf8(text, {&character, 1});
    return text += piece.size() > longest ? "...'" : "'";
}

Token Lexer::next() {
    skipBlanks();
    Token const token = scan();
    previous_ = token.kind;
    return token;
}

Token Lexer::token(TokenKind kind, std::size_t first) const noexcept {
    Token result;
    result.kind = kind;
    result.column = first + 1;
    result.source = text_.substr(first, at_ - first);
    result.text = result.source;
    return result;
}

Token Lexer::scan() {
    std::size_t const first = at_;
    if (at_ == text_.size()) return token(TokenKind::end, first);
    wchar_t const c = peek();
    if (tree::isNameStart(c)) return scanName(first);
    if (c == L'\'' || c == L'"') return scanLiteral(first);
    if (tree::isDigit(c) || (c == L'.' && tree::isDigit(peek(1)))) return scanNumber(first);
    if (c == L'*') return scanStar(first);
    return scanSymbol(first);
}

// After an operand a star multiplies and "and", "or", "div", "mod" are operators.
bool Lexer::followsOperand() const noexcept {
    switch (previous_) {
    case TokenKind::end:
    case TokenKind::at:
    case TokenKind::axis:
    case TokenKind::leftParenthesis:
    case TokenKind::leftBracket:
    case TokenKind::comma: return false;
    default: return !isOperator(previous_);
    }
}

Token Lexer::scanStar(std::size_t first) {
    ++at_;
    return token(followsOperand() ? TokenKind::multiply : TokenKind::star, first);
}

Token Lexer::scanName(std::size_t first) {
    skipNameParts();
    Token name = token(TokenKind::name, first);
    if (followsOperand()) {
        if (name.text == L"and") name.kind = TokenKind::logicalAnd;
        if (name.text == L"or") name.kind = TokenKind::logicalOr;
        if (name.text == L"div") name.kind = TokenKind::divide;
        if (name.text == L"mod") name.kind = TokenKind::modulo;
        if (name.kind != TokenKind::name) return name;
    }
    if (peek() == L':' && (tree::isNameStart(peek(1)) || peek(1) == L'*')) {
        name.prefix = name.text;
        std::size_t const local = ++at_;
        if (peek() == L'*') {
            ++at_;
            name.kind = TokenKind::nameStar;
        } else {
            skipNameParts();
        }
        name.text = text_.substr(local, at_ - local);
        name.source = text_.substr(first, at_ - first);
    }
    classifyByWhatFollows(name);
    return name;
}

void Lexer::classifyByWhatFollows(Token& name) noexcept {
    if (name.kind != TokenKind::name) return;
    std::size_t const end = at_;
    skipBlanks();
    if (name.prefix.empty() && peek() == L':' && peek(1) == L':') {
        name.kind = TokenKind::axis;
        at_ += 2;
        return;
    }
    if (peek() == L'(') name.kind = TokenKind::function;
    at_ = end;
}

Token Lexer::scanLiteral(std::size_t first) {
    std::size_t const last = text_.find(text_[first], first + 1);
    if (last == std::wstring_view::npos) throw QueryError{first + 1, "the literal is not closed"};
    at_ = last + 1;
    Token literal = token(TokenKind::literal, first);
    literal.text = text_.substr(first + 1, last - first - 1);
    return literal;
}

Token Lexer::scanNumber(std::size_t first) {
    skipDigits();
    if (peek() == L'.') {
        ++at_;
        skipDigits();
    }
    return token(TokenKind::number, first);
}

Token Lexer::scanSymbol(std::size_t first) {
    std::size_t length = 1;
    TokenKind const kind = symbolKind(length);
    if (kind == TokenKind::end)
        throw QueryError{first + 1, "unexpected " + quoted(text_.substr(first, 1))};
    at_ += length;
    return token(kind, first);
}

TokenKind Lexer::symbolKind(std::size_t& length) const noexcept {
    auto const either = [&](wchar_t second, TokenKind two, TokenKind one) {
        if (peek(1) != second) return one;
        length = 2;
        return two;
    };
    switch (peek()) {
    case L'(': return TokenKind::leftParenthesis;
    case L')': return TokenKind::rightParenthesis;
    case L'[': return TokenKind::leftBracket;
    case L']': return TokenKind::rightBracket;
    case L',': return TokenKind::comma;
    case L'@': return TokenKind::at;
    case L'$': return TokenKind::dollar;
    case L'|': return TokenKind::bar;
    case L'+': return TokenKind::plus;
    case L'-': return TokenKind::minus;
    case L'=': return TokenKind::equal;
    case L'.': return either(L'.', TokenKind::dotDot, TokenKind::dot);
    case L'/': return either(L'/', TokenKind::slashSlash, TokenKind::slash);
    case L'!': return either(L'=', TokenKind::notEqual, TokenKind::end);
    case L'<': return either(L'=', TokenKind::lessOrEqual, TokenKind::less);
    case L'>': return either(L'=', TokenKind::greaterOrEqual, TokenKind::greater);
    default: return TokenKind::end;
    }
}

void Lexer::skipBlanks() noexcept {
    while (at_ < text_.size() && tree::isBlank(text_[at_]))
        ++at_;
}

void Lexer::skipNameParts() noexcept {
    while (tree::isNamePart(peek()))
        ++at_;
}

void Lexer::skipDigits() noexcept {
    while (tree::isDigit(peek()))
        ++at_;
}

} // namespace tibxml::query
