#include "Layout.h"

#include <tree/Text.h>

namespace tibxml::output {

using tree::Node;

namespace {

bool continuesText(Node const& text) noexcept {
    Node const* before = text.previousSibling();
    while (before != nullptr && before->is(tree::NodeKind::text) && before->text().empty())
        before = before->previousSibling();
    return before != nullptr && before->is(tree::NodeKind::text);
}

} // namespace

bool startsBlankRun(Node const& text) noexcept {
    if (!tree::isBlankText(text.text()) || continuesText(text)) return false;
    Node const* node = text.next;
    while (node != nullptr && node->is(tree::NodeKind::text) && tree::isBlankText(node->text()))
        node = node->next;
    return node == nullptr || !node->is(tree::NodeKind::text);
}

} // namespace tibxml::output
