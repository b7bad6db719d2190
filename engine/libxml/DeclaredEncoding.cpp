#include "DeclaredEncoding.h"

namespace tibxml::reader {

std::string_view declaredEncoding(std::string_view text) noexcept {
    text = text.substr(0, text.find("?>"));
    std::size_t const name = text.find("encoding");
    if (name == std::string_view::npos) return {};
    std::size_t const open = text.find_first_of("\"'", name);
    if (open == std::string_view::npos) return {};
    std::size_t const close = text.find(text[open], open + 1);
    if (close == std::string_view::npos) return {};
    return text.substr(open + 1, close - open - 1);
}

} // namespace tibxml::reader
