#pragma once

#include <xpath/byte_stream.h>
#include <xpath/lexical_code.h>
#include <xpath/token_list.h>

#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

namespace TinyXPath {

// The bytes of a path together with the tokens made of them. The lexer accepts every input and
// reports nothing: bytes which belong to no longer token are tokens by themselves, spaces too.
class xpath_stream : public byte_stream {
public:
    explicit xpath_stream(std::string_view utf8) : byte_stream(utf8) {}

    virtual ~xpath_stream() = default;

    // What a grammar over the tokens tells and asks; see token_syntax_decoder. `detail` is 0.
    virtual void action(int rule, int alternative, int parts, int detail) = 0;
    virtual int question(int rule, int alternative, int parts, int detail) = 0;

    // Takes the list which lex() fills. Must be called once, before lex().
    void adopt(std::unique_ptr<token_list> list) noexcept { ownedTokens = std::move(list); }

    token_list& tokens() noexcept { return *ownedTokens; }

    // Turns the bytes from the current one up to the first zero byte into tokens. A literal's text
    // is what stands between its quotes; a literal without its closing quote, and with it the rest
    // of the input, gives no token. Throws std::bad_alloc.
    void lex();

private:
    void lexToken();
    void lexByte();
    void lexName();
    void lexNumber(bool dotTaken);
    void lexLiteral(lexical_code quote);

    lexical_code currentClass() const noexcept { return byteClass(look()); }

    bool takesByteOfNumber(bool& dotTaken) const noexcept;

    std::unique_ptr<token_list> ownedTokens;
};

} // namespace TinyXPath
