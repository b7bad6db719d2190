// The lexer of paths: a path's bytes, the tokens made of them, and the place where a grammar over
// the tokens would be plugged in.
//
// It works on bytes and not on characters, and it is never wrong: every input gives some tokens.
// Its classes and codes are in lexical_code.h.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include <xpath/lexical_code.h>

namespace TinyXPath {

// One piece of a path and what it is.
struct token {
    std::string text;
    std::int32_t code;
    token* next;
    token* previous;
};

// The tokens of one path in order: a doubly linked ring that is closed by a sentinel_ of code 0.
// The list owns its tokens; they live as long as it does.
class token_list {
public:
    token_list() noexcept;
    token_list(token_list const&) = delete;
    token_list& operator=(token_list const&) = delete;
    virtual ~token_list();

    // Adds a token after the last one, with a copy of the `count` bytes at `bytes`. Throws
    // std::bad_alloc and then leaves the list as it was.
    void append(std::int32_t code, char const* bytes, std::uint64_t count);

    // Puts the cursor on the first token and reads it.
    token const* first() noexcept;

    // Reads the token at the cursor and moves the cursor on. Null when there is none: at the end of
    // the list, which is the first token of code 0, and before the first call of first().
    token const* next() noexcept;

    // The token that next() would read, or null.
    token const* cursor() const noexcept;

private:
    token sentinel_;
    token* last_;
    token const* toRead_;
};

// A token list that a grammar can run over. The grammar reports what it finds through the two
// action operations. Paths are taken apart without a grammar, straight from the list, so nothing
// calls these operations: they are the place where a grammar would be plugged in.
class token_syntax_decoder : public token_list {
public:
    // A grammar rule was found: which rule, which of its alternatives, and the number of parts.
    virtual void action(int rule, int alternative, int parts) = 0;

    // Asks the receiver of the actions for a number.
    virtual int question(int rule, int alternative, int parts) = 0;

protected:
    // How far a grammar has read, in tokens.
    int position = 0;
};

// Bytes read one by one, from a private copy that ends in a zero byte. Reading never runs over the
// end: at the end it returns the zero byte, which marks the end of input.
class byte_stream {
public:
    // Copies `utf8`. Throws std::bad_alloc.
    explicit byte_stream(std::string_view utf8);
    byte_stream(byte_stream const&) = delete;
    byte_stream& operator=(byte_stream const&) = delete;
    ~byte_stream() = default;

    // The number of bytes in the buffer_, with the terminating zero.
    std::uint64_t size() const noexcept { return length_; }

    // The byte being looked at; zero at the end.
    unsigned char look() const noexcept { return static_cast<unsigned char>(*current_); }

    // The byte after it; zero when the byte being looked at is the last one or there is none.
    unsigned char lookAhead() const noexcept;

    // The `count` bytes just before the byte being looked at. At most as many as were passed.
    char const* taken(std::uint64_t count) const noexcept { return current_ - count; }

    bool more() const noexcept { return hasMore_; }

    // Goes on by one byte; at the end, stays there.
    void advance() noexcept;

private:
    std::uint64_t length_;
    std::unique_ptr<char[]> buffer_;
    char const* current_;
    char const* end_;
    bool hasMore_;
};

// The bytes of a path together with the tokens made of them. The lexer accepts every input and
// reports no error: bytes that belong to no longer token are tokens by themselves, spaces too.
class xpath_stream : public byte_stream {
public:
    explicit xpath_stream(std::string_view utf8) : byte_stream(utf8) {}

    virtual ~xpath_stream() = default;

    // The actions of a grammar over the tokens; see token_syntax_decoder. `detail` is 0.
    virtual void action(int rule, int alternative, int parts, int detail) = 0;
    virtual int question(int rule, int alternative, int parts, int detail) = 0;

    // Takes the list that lex() fills. Must be called once, before lex().
    void adopt(std::unique_ptr<token_list> list) noexcept { ownedTokens_ = std::move(list); }

    token_list& tokens() noexcept { return *ownedTokens_; }

    // Turns the bytes from the current_ one up to the first zero byte into tokens. A literal's text
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

    std::unique_ptr<token_list> ownedTokens_;
};

// The decoder of a stream: passes its actions on to the stream that owns it.
class token_redef : public token_syntax_decoder {
public:
    explicit token_redef(xpath_stream& owner) noexcept : stream_(owner) {}

    void action(int rule, int alternative, int parts) override;
    int question(int rule, int alternative, int parts) override;

private:
    xpath_stream& stream_;
};

} // namespace TinyXPath

// The stream that takes a path object apart: it needs the tokens only and ignores grammar actions.
class ParseToXPathElements : public TinyXPath::xpath_stream {
public:
    explicit ParseToXPathElements(std::string_view utf8) : xpath_stream(utf8) {
        adopt(std::make_unique<TinyXPath::token_redef>(*this));
    }

    void action(int, int, int, int) override {}

    int question(int, int, int, int) override { return 0; }
};
