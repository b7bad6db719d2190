#include "Declaration.h"

#include <algorithm>
#include <cstddef>

#include <output/Encoding.h>

namespace tibxml::output {

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

// One name="value" of the declaration; from begins at the white space in front of it.
struct PseudoAttribute {
    std::size_t from;
    std::size_t to; // 0 when there is none
    std::string_view name;
    std::string_view value;
};

PseudoAttribute pseudoAttributeAt(std::string_view text, std::size_t from) noexcept {
    PseudoAttribute const none{from, 0, {}, {}};
    std::size_t const name = text.find_first_not_of(whiteSpace, from);
    std::size_t const equals = text.find('=', from);
    if (equals == std::string_view::npos) return none;
    std::size_t const nameEnd = std::min(text.find_first_of(whiteSpace, name), equals);
    std::size_t const quote = text.find_first_not_of(whiteSpace, equals + 1);
    if (quote == std::string_view::npos || (text[quote] != '"' && text[quote] != '\'')) return none;
    std::size_t const end = text.find(text[quote], quote + 1);
    if (end == std::string_view::npos) return none;
    return {from, end + 1, text.substr(name, nameEnd - name),
            text.substr(quote + 1, end - quote - 1)};
}

PseudoAttribute findEncoding(std::string_view text) noexcept {
    PseudoAttribute found = pseudoAttributeAt(text, 0);
    while (found.to != 0 && found.name != "encoding")
        found = pseudoAttributeAt(text, found.to);
    return found;
}

bool isUtf16(std::string_view encoding) noexcept {
    return encoding.size() == 6 && encoding.substr(3) == "-16" && (encoding[0] | 32) == 'u' &&
           (encoding[1] | 32) == 't' && (encoding[2] | 32) == 'f';
}

} // namespace

std::string_view encodingOf(std::string_view declaration) noexcept {
    return findEncoding(declaration).value;
}

std::string withoutEncoding(std::string_view declaration) {
    std::string text{declaration};
    PseudoAttribute const encoding = findEncoding(declaration);
    if (encoding.to != 0 && !isUtf16(encoding.value))
        text.erase(encoding.from, encoding.to - encoding.from);
    return text;
}

std::string_view declaredEncoding(tree::Document const& document) noexcept {
    tree::Node const* const first = document.node()->firstChild();
    if (first == nullptr || !first->is(tree::NodeKind::declaration)) return {};
    return encodingOf(first->text());
}

} // namespace tibxml::output
