#include <tree/Text.h>

#include <algorithm>
#include <cstdint>
#include <iterator>

#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

// Beyond ASCII, as XML 1.0 (fifth edition) lists them.
constexpr Range startRanges[] = {
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
    {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
    {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};

bool isAsciiLetter(std::uint32_t c) noexcept {
    return (c | 0x20U) >= 'a' && (c | 0x20U) <= 'z';
}

bool inStartRanges(std::uint32_t c) noexcept {
    return std::any_of(std::begin(startRanges), std::end(startRanges),
                       [c](Range range) { return c >= range.first && c <= range.last; });
}

Node const* nextText(Node const* node, Node const* root) noexcept {
    do {
        node = nextInSubtree(node, root);
    } while (node != nullptr && !node->isText());
    return node;
}

} // namespace

bool isNameStart(wchar_t character) noexcept {
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): a wide character is never negative
    auto const c = static_cast<std::uint32_t>(character);
    return c < 0x80 ? isAsciiLetter(c) || c == '_' : inStartRanges(c);
}

bool isNamePart(wchar_t character) noexcept {
    // NOLINTNEXTLINE(bugprone-signed-char-misuse): a wide character is never negative
    auto const c = static_cast<std::uint32_t>(character);
    if (c < 0x80) return isAsciiLetter(c) || isDigit(c) || c == '_' || c == '-' || c == '.';
    return inStartRanges(c) || c == 0xB7 || (c >= 0x300 && c <= 0x36F) || c == 0x203F ||
           c == 0x2040;
}

std::string_view stringValue(Node const* node, std::string& storage) {
    if (!node->hasChildList()) return node->text();
    Node const* const first = nextText(node, node);
    if (first == nullptr) return {};
    if (nextText(first, node) == nullptr) return first->text();
    storage.clear();
    appendStringValue(node, storage);
    return storage;
}

void appendStringValue(Node const* node, std::string& out) {
    if (!node->hasChildList()) {
        out += node->text();
        return;
    }
    for (Node const* text = nextText(node, node); text != nullptr; text = nextText(text, node))
        out += text->text();
}

} // namespace tibxml::tree
