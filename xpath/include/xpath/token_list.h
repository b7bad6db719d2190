#pragma once

#include <cstdint>
#include <string>

namespace TinyXPath {

// One piece of a path and what it is.
struct token {
    std::string text;
    std::int32_t code;
    token* next;
    token* previous;
};

// The tokens of one path in order: a doubly linked ring which is closed by a sentinel of code 0.
// The list owns its tokens; they live as long as it does.
class token_list {
public:
    token_list() noexcept;
    token_list(token_list const&) = delete;
    token_list& operator=(token_list const&) = delete;
    virtual ~token_list();

    // Adds a token behind the last one, with a copy of the `count` bytes at `bytes`. Throws
    // std::bad_alloc and then leaves the list as it was.
    void append(std::int32_t code, char const* bytes, std::uint64_t count);

    // Puts the cursor on the first token and reads it.
    token const* first() noexcept;

    // Reads the token at the cursor and moves the cursor on. Null when there is none: at the end of
    // the list, which is the first token of code 0, and before the first call of first().
    token const* next() noexcept;

    // The token which next() would read, or null.
    token const* cursor() const noexcept;

private:
    token sentinel;
    token* last;
    token const* toRead;
};

} // namespace TinyXPath
