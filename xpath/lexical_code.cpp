#include <xpath/lexical_code.h>

#include <array>
#include <cstddef>
#include <iterator>

namespace TinyXPath {
namespace {

constexpr std::size_t byteValues = 256;

using ClassTable = std::array<std::int32_t, byteValues>;

constexpr void classify(ClassTable& table, unsigned first, unsigned last, lexical_code code) {
    for (unsigned byte = first; byte <= last; ++byte) {
        table[byte] = code;
    }
}

struct ByteOfClass {
    unsigned char byte;
    lexical_code code;
};

constexpr ByteOfClass singleBytes[] = {
    {0x00, code_null},
    {'\t', code_space},
    {'\n', code_space},
    {'\r', code_space},
    {' ', code_space},
    {0xB7, code_extender},
    {'/', code_slash},
    {'@', code_at},
    {'.', code_dot},
    {'-', code_minus},
    {'_', code_under},
    {':', code_colon},
    {';', code_semi_colon},
    {'"', code_double_quote},
    {'\'', code_simple_quote},
    {'$', code_dollar},
    {'(', code_opening_parenthesis},
    {')', code_closing_parenthesis},
    {'*', code_star},
    {'+', code_plus},
    {',', code_comma},
    {'<', code_less_than},
    {'>', code_greater_than},
    {'=', code_equal},
    {'[', code_opening_bracket},
    {']', code_closing_bracket},
    {'|', code_bar},
    {'!', code_exclamation},
};

// The bytes from 0xC0 up are Latin-1's letters; its two signs among them (multiplication and
// division) are not. In UTF-8 most of these bytes begin a character of several bytes.
constexpr ClassTable makeClassTable() {
    ClassTable table{};
    classify(table, 0, byteValues - 1, code_none);
    classify(table, '0', '9', code_digit);
    classify(table, 'A', 'Z', code_base_char);
    classify(table, 'a', 'z', code_base_char);
    classify(table, 0xC0, 0xD6, code_base_char);
    classify(table, 0xD8, 0xF6, code_base_char);
    classify(table, 0xF8, 0xFF, code_base_char);
    for (ByteOfClass const& single : singleBytes) {
        table[single.byte] = single.code;
    }
    return table;
}

constexpr ClassTable classTable = makeClassTable();

constexpr std::string_view displayNames[] = {
    "null",
    "<small>none</small>",
    "space",
    "digit",
    "base char",
    "extender",
    "slash",
    "at",
    "dot",
    "minus",
    "under",
    "colon",
    "semi colon",
    "double quote",
    "simple quote",
    "dollar",
    "opening parenthesis",
    "closing parenthesis",
    "star",
    "plus",
    "comma",
    "less than",
    "greater than",
    "equal",
    "opening bracket",
    "closing bracket",
    "or character (|)",
    "exclamation (!)",
    "NCName",
    "Number",
    "literal",
    "::",
    "//",
    "..",
    "!=",
    "<=",
    ">=",
    "or",
    "and",
    "mod",
    "div",
    "ancestor",
    "ancestor-or-self",
    "attribute",
    "child",
    "descendant",
    "descendant-or-self",
    "following",
    "following-sibling",
    "namespace",
    "parent",
    "preceding",
    "preceding-sibling",
    "self",
    "processing-instruction",
    "comment",
    "node",
    "text",
};

static_assert(std::size(displayNames) == code_text + 1, "one display name for each code");

} // namespace

lexical_code byteClass(unsigned char byte) noexcept {
    return static_cast<lexical_code>(classTable[byte]);
}

std::string_view displayName(std::int32_t code) noexcept {
    bool const known = code >= 0 && code <= code_text;
    return known ? displayNames[code] : std::string_view{};
}

lexical_code keywordCode(char const* name, std::uint64_t count, lexical_code following) noexcept {
    std::string_view const text(name, count);
    std::int32_t const last = following == code_opening_parenthesis ? code_text : code_node;
    for (std::int32_t code = code_or; code <= last; ++code) {
        if (displayNames[code] == text) {
            return static_cast<lexical_code>(code);
        }
    }
    return code_ncname;
}

} // namespace TinyXPath
