#include <tree/Document.h>

#include <atomic>

#include <tree/NamespaceNodes.h>
#include <tree/Navigation.h>

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

// Here, where it is known what NamespaceNodes is.
Document::~Document() = default;

Document* Document::create() {
    return new Document;
}

Node* Document::documentElement() const noexcept {
    for (Node* child = node_->firstChild(); child != nullptr; child = child->next) {
        if (child->is(NodeKind::element)) return child;
    }
    return nullptr;
}

void Document::ensureOrder(Node const* within) noexcept {
    Node const* const root = rootOf(within);
    if (orderedRoot_ == root && orderedVersion_ == version_) return;
    std::uint32_t order = 0;
    for (auto* node = const_cast<Node*>(root); node != nullptr; node = nextInSubtree(node, root)) {
        node->order = order++;
        for (Node* a = node->firstAttribute(); a != nullptr; a = a->next)
            a->order = order++;
    }
    orderedRoot_ = root;
    orderedVersion_ = version_;
}

} // namespace tibxml::tree
