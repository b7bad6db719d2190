#pragma once

#include <cstdint>
#include <string_view>

namespace TinyXPath {

// What the lexer says about a byte or a token. 0 to 27 are classes of single bytes and, at the same
// time, the codes of the tokens which are one such byte; 28 and up are codes of longer tokens.
// The numbers are fixed: they are what a token list holds.
enum lexical_code : std::int32_t {
    code_null = 0,
    code_none = 1,
    code_space = 2,
    code_digit = 3,
    code_base_char = 4,
    code_extender = 5,
    code_slash = 6,
    code_at = 7,
    code_dot = 8,
    code_minus = 9,
    code_under = 10,
    code_colon = 11,
    code_semi_colon = 12,
    code_double_quote = 13,
    code_simple_quote = 14,
    code_dollar = 15,
    code_opening_parenthesis = 16,
    code_closing_parenthesis = 17,
    code_star = 18,
    code_plus = 19,
    code_comma = 20,
    code_less_than = 21,
    code_greater_than = 22,
    code_equal = 23,
    code_opening_bracket = 24,
    code_closing_bracket = 25,
    code_bar = 26,
    code_exclamation = 27,

    code_ncname = 28,
    code_number = 29,
    code_literal = 30,

    // 31 to 36 are names for operators of two characters. The lexer never makes them: it hands out
    // the two bytes one by one.
    code_double_colon = 31,
    code_double_slash = 32,
    code_double_dot = 33,
    code_not_equal = 34,
    code_less_or_equal = 35,
    code_greater_or_equal = 36,

    code_or = 37,
    code_and = 38,
    code_mod = 39,
    code_div = 40,
    code_ancestor = 41,
    code_ancestor_or_self = 42,
    code_attribute = 43,
    code_child = 44,
    code_descendant = 45,
    code_descendant_or_self = 46,
    code_following = 47,
    code_following_sibling = 48,
    code_namespace = 49,
    code_parent = 50,
    code_preceding = 51,
    code_preceding_sibling = 52,
    code_self = 53,
    code_processing_instruction = 54,
    code_comment = 55,
    code_node = 56,
    code_text = 57,
};

// The class (0 to 27) of one byte of UTF-8 text. Bytes are never combined into characters first, so
// the pieces of a multi-byte character are classified each on its own.
lexical_code byteClass(unsigned char byte) noexcept;

// The diagnostic name of a code, such as "NCName" for 28. Empty for a number which is not a code.
std::string_view displayName(std::int32_t code) noexcept;

// The code of the name of `count` bytes at `name`: that of the keyword which it equals byte for
// byte, or code_ncname. "text" is a keyword only when an opening parenthesis follows at once;
// `following` is the class of the byte after the name.
lexical_code keywordCode(char const* name, std::uint64_t count, lexical_code following) noexcept;

} // namespace TinyXPath
