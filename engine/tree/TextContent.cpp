#include <tree/TextContent.h>

#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

Node const* nextText(Node const* node, Node const* root) noexcept {
    do {
        node = nextInSubtree(node, root);
    } while (node != nullptr && !node->isText());
    return node;
}

} // namespace

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
