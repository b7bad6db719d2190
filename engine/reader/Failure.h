// How the parser leaves the grammar when a document is not well-formed.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "Messages.h"

namespace tibxml::reader {

// Thrown by the reader's parts, caught where the reading of a document begins.
struct ParseFailure {
    std::uint32_t code;
    std::string reason;
    char const* at; // in the window
};

[[noreturn]] void fail(Message message, char const* at,
                       std::initializer_list<std::string_view> found = {});

// Fails because of the character at p, if that is one that XML allows, and else for not being one.
[[noreturn]] void failAtCharacter(char const* p, char const* end, Message message,
                                  std::initializer_list<std::string_view> more = {});

// Null when the character at p may be whole with more text; otherwise fails because of it.
char const* stopAt(char const* p, char const* end);

// The character at p for a message: 'x', U+0001, byte 0xFF, or the end of the document.
std::string shown(char const* p, char const* end);

} // namespace tibxml::reader
