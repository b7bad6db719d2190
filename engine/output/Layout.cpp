#include "Layout.h"

#include <string_view>

namespace tibxml::output {

using tree::Node;

namespace {

bool isBlank(std::string_view text) noexcept {
    return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

bool continuesText(Node const& text) noexcept {
    Node const* before = text.previousSibling();
    while (before != nullptr && before->is(tree::NodeKind::text) && before->text().empty())
        before = before->previousSibling();
    return before != nullptr && before->is(tree::NodeKind::text);
}

} // namespace

bool startsBlankRun(Node const& text) noexcept {
    if (!isBlank(text.text()) || continuesText(text)) return false;
    Node const* node = text.next;
    while (node != nullptr && node->is(tree::NodeKind::text) && isBlank(node->text()))
        node = node->next;
    return node == nullptr || !node->is(tree::NodeKind::text);
}

} // namespace tibxml::output
