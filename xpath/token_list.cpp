#include <xpath/token_list.h>

#include <xpath/lexical_code.h>

#include <cstddef>
#include <memory>

namespace TinyXPath {

token_list::token_list() noexcept
    : sentinel{{}, code_null, &sentinel, &sentinel},
      last(&sentinel),
      toRead(nullptr) {}

token_list::~token_list() {
    for (token* node = sentinel.next; node != &sentinel;) {
        std::unique_ptr<token> const freed(node);
        node = node->next;
    }
}

void token_list::append(std::int32_t code, char const* bytes, std::uint64_t count) {
    auto const size = static_cast<std::size_t>(count);
    auto node = std::make_unique<token>(token{std::string(bytes, size), code, &sentinel, last});
    last->next = node.get();
    sentinel.previous = node.get();
    last = node.release();
}

token const* token_list::first() noexcept {
    toRead = sentinel.next;
    return next();
}

token const* token_list::next() noexcept {
    token const* const read = cursor();
    toRead = read != nullptr ? read->next : nullptr;
    return read;
}

token const* token_list::cursor() const noexcept {
    return toRead != nullptr && toRead->code != code_null ? toRead : nullptr;
}

} // namespace TinyXPath
