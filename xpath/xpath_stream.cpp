#include <xpath/xpath_stream.h>

namespace TinyXPath {
namespace {

// Colon and dot go on with a name, so "child::" and "a.b" are one token each.
bool continuesName(lexical_code byte) noexcept {
    switch (byte) {
    case code_digit:
    case code_base_char:
    case code_extender:
    case code_dot:
    case code_minus:
    case code_under:
    case code_colon: return true;
    default: return false;
    }
}

} // namespace

void xpath_stream::lex() {
    while (currentClass() != code_null) {
        lexToken();
    }
}

void xpath_stream::lexToken() {
    switch (lexical_code const first = currentClass()) {
    case code_digit: lexNumber(false); break;
    case code_base_char:
    case code_under: lexName(); break;
    case code_double_quote:
    case code_simple_quote: lexLiteral(first); break;
    case code_dot:
        if (byteClass(lookAhead()) == code_digit) {
            lexNumber(true);
            break;
        }
        [[fallthrough]];
    default: lexByte();
    }
}

void xpath_stream::lexByte() {
    lexical_code const code = currentClass();
    advance();
    tokens().append(code, taken(1), 1);
}

void xpath_stream::lexName() {
    std::uint64_t count = 0;
    do {
        advance();
        ++count;
    } while (continuesName(currentClass()));
    char const* const name = taken(count);
    tokens().append(keywordCode(name, count, currentClass()), name, count);
}

void xpath_stream::lexNumber(bool dotTaken) {
    std::uint64_t count = 0;
    do {
        advance();
        ++count;
    } while (takesByteOfNumber(dotTaken));
    tokens().append(code_number, taken(count), count);
}

bool xpath_stream::takesByteOfNumber(bool& dotTaken) const noexcept {
    if (currentClass() == code_dot && !dotTaken) {
        dotTaken = true;
        return true;
    }
    return currentClass() == code_digit;
}

void xpath_stream::lexLiteral(lexical_code quote) {
    advance();
    std::uint64_t count = 0;
    for (; currentClass() != quote; ++count) {
        if (currentClass() == code_null) {
            return;
        }
        advance();
    }
    tokens().append(code_literal, taken(count), count);
    advance();
}

} // namespace TinyXPath
