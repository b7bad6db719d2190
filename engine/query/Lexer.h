// Cuts an expression into tokens.
#pragma once

#include <query/QueryError.h>

#include "Token.h"

namespace tibxml::query {

class Lexer {
public:
    explicit Lexer(std::wstring_view expression) noexcept : text_{expression} {}

    // The next token; `end` again and again behind the last one. Throws QueryError for characters
    // that start no token.
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

// A piece of the expression for a message, in UTF-8 and in quotes. What is no character is left
// out.
std::string quoted(std::wstring_view piece);

} // namespace tibxml::query
