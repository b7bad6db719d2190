#include <tree/Document.h>

#include <atomic>

namespace tibxml::tree {

namespace {

std::uint64_t nextSerial() noexcept {
    static std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

} // namespace

Document::Document()
    : serial_{nextSerial()},
      names_{arena_},
      node_{arena_.newNode(NodeKind::document)} {
    node_->flags = inDocument;
}

Document* Document::create() {
    return new Document;
}

Node* Document::documentElement() const noexcept {
    for (Node* child = node_->firstChild(); child != nullptr; child = child->next) {
        if (child->is(NodeKind::element)) return child;
    }
    return nullptr;
}

} // namespace tibxml::tree
