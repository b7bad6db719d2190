#include <xpath/xpath_stream.h>

#include <algorithm>
#include <cstddef>

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

// make_unique's value-initialisation supplies the terminating zero.
byte_stream::byte_stream(std::string_view utf8)
    : length_(utf8.size() + 1),
      buffer_(std::make_unique<char[]>(length_)),
      current_(buffer_.get()),
      end_(buffer_.get() + utf8.size()),
      hasMore_(current_ != end_) {
    std::copy(utf8.begin(), utf8.end(), buffer_.get());
}

unsigned char byte_stream::lookAhead() const noexcept {
    return end_ - current_ < 2 ? static_cast<unsigned char>(0)
                               : static_cast<unsigned char>(current_[1]);
}

void byte_stream::advance() noexcept {
    if (hasMore_) {
        ++current_;
        hasMore_ = current_ != end_;
    }
}

token_list::token_list() noexcept
    : sentinel_{{}, code_null, &sentinel_, &sentinel_},
      last_(&sentinel_),
      toRead_(nullptr) {}

token_list::~token_list() {
    for (token* node = sentinel_.next; node != &sentinel_;) {
        std::unique_ptr<token> const freed(node);
        node = node->next;
    }
}

void token_list::append(std::int32_t code, char const* bytes, std::uint64_t count) {
    auto const size = static_cast<std::size_t>(count);
    auto node = std::make_unique<token>(token{std::string(bytes, size), code, &sentinel_, last_});
    last_->next = node.get();
    sentinel_.previous = node.get();
    last_ = node.release();
}

token const* token_list::first() noexcept {
    toRead_ = sentinel_.next;
    return next();
}

token const* token_list::next() noexcept {
    token const* const read = cursor();
    toRead_ = read != nullptr ? read->next : nullptr;
    return read;
}

token const* token_list::cursor() const noexcept {
    return toRead_ != nullptr && toRead_->code != code_null ? toRead_ : nullptr;
}

void token_redef::action(int rule, int alternative, int parts) {
    stream_.action(rule, alternative, parts, 0);
}

int token_redef::question(int rule, int alternative, int parts) {
    return stream_.question(rule, alternative, parts, 0);
}

} // namespace TinyXPath
