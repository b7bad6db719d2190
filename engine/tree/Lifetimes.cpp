#include <tree/Lifetimes.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include <tree/Document.h>
#include <tree/Editing.h>
#include <tree/NamespaceNodes.h>
#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

std::size_t ownHandle(Node const* node) noexcept {
    return node->handle != nullptr ? 1 : 0;
}

} // namespace

std::size_t Lifetimes::countInnerHandles(Node const* subtree) const noexcept {
    std::size_t count = NamespaceNodes::countHandles(document_, subtree);
    for (Node const* node = subtree; node != nullptr; node = nextInSubtree(node, subtree)) {
        if (node != subtree) count += ownHandle(node);
        for (Node const* a = node->firstAttribute(); a != nullptr; a = a->next)
            count += ownHandle(a);
    }
    return count;
}

// An entry to be put in later without allocating.
Lifetimes::HandleCounts::node_type Lifetimes::spareEntry() {
    detachedHandles_.try_emplace(nullptr);
    return detachedHandles_.extract(nullptr);
}

// Everything about a removal that may fail: done before anything changes.
void Lifetimes::noteHandles(Node const* subtree) {
    if (std::size_t const handles = countInnerHandles(subtree); handles != 0)
        detachedHandles_[subtree] = handles;
}

// Gives back a detached subtree without handles, now or when the last pin is gone.
void Lifetimes::dispose(Node* subtree) noexcept {
    if (pins_ == 0) return destroy(document_, subtree);
    if ((subtree->flags & awaitsDisposal) != 0) return;
    try {
        waiting_.push_back(subtree);
        subtree->flags |= awaitsDisposal;
    } catch (std::bad_alloc const&) {
        return; // it stays until the document goes
    }
}

// Handles within a detached tree are gone, or have left it with a part of it.
void Lifetimes::releaseInnerHandles(Node* root, std::size_t count) noexcept {
    auto const entry = detachedHandles_.find(root);
    entry->second -= count;
    if (entry->second != 0) return;
    detachedHandles_.erase(entry);
    if (root->handle == nullptr) dispose(root);
}

// The second half of a removal, after noteHandles().
void Lifetimes::takeOut(Node* subtree) noexcept {
    std::size_t const handles = innerHandles(subtree) + ownHandle(subtree);
    Node* const detachedRoot = isInDocument(subtree) ? nullptr : rootOf(subtree);
    unlink(document_, subtree);
    if (handles == 0) {
        dispose(subtree);
    } else if (detachedRoot != nullptr) {
        releaseInnerHandles(detachedRoot, handles);
    }
}

// A detached subtree was put into another one: its handles count there.
void Lifetimes::settle(Node* subtree, HandleCounts::node_type spare) noexcept {
    auto const entry = detachedHandles_.extract(subtree);
    std::size_t const handles = ownHandle(subtree) + (entry.empty() ? 0 : entry.mapped());
    if (handles == 0) return;
    Node const* const root = rootOf(subtree);
    auto const rootEntry = detachedHandles_.find(root);
    if (rootEntry != detachedHandles_.end()) {
        rootEntry->second += handles;
        return;
    }
    spare.key() = root;
    spare.mapped() = handles;
    detachedHandles_.insert(std::move(spare));
}

// The caller of a move has handles on the nodes, so both trees live on.
void Lifetimes::moveIntoDetached(Node* node, Node* parent, Node* before) {
    auto spare = spareEntry();
    if (node->parent != nullptr) remove(node);
    insertBefore(document_, parent, node, before);
    settle(node, std::move(spare));
}

void Lifetimes::handleAttached(Node* node) {
    if (isInDocument(node)) return;
    Node const* const root = rootOf(node);
    if (root != node) ++detachedHandles_[root];
}

void Lifetimes::handleReleased(Node* node) noexcept {
    if (isInDocument(node)) return;
    Node* const root = rootOf(node);
    if (root != node) return releaseInnerHandles(root, 1);
    if (!detachedHandles_.contains(root)) dispose(root);
}

void Lifetimes::namespaceHandleReleased(Node* node) noexcept {
    Node* const element = node->parent;
    NamespaceNodes::release(document_, node);
    if (!isInDocument(element)) releaseInnerHandles(rootOf(element), 1);
}

// Whether a waiting subtree was attached again, or got a handle, in the meantime.
bool Lifetimes::staysWithoutPin(Node* node) noexcept {
    node->flags &= static_cast<std::uint8_t>(~awaitsDisposal);
    return node->parent != nullptr || node->handle != nullptr || detachedHandles_.contains(node);
}

void Lifetimes::unpin() noexcept {
    if (--pins_ != 0) return;
    // Settled for all before any of them goes, because one may lie in another by now.
    std::erase_if(waiting_, [this](Node* node) { return staysWithoutPin(node); });
    for (Node* node : waiting_)
        destroy(document_, node);
    waiting_.clear();
    NamespaceNodes::sweep(document_);
    movedAway_.clear();
}

void Lifetimes::remove(Node* node) {
    noteHandles(node);
    takeOut(node);
}

void Lifetimes::removeChildren(Node* parent, Node* attribute) {
    try {
        if (attribute != nullptr) noteHandles(attribute);
        for (Node* child = parent->firstChild(); child != nullptr; child = child->next)
            noteHandles(child);
    } catch (...) {
        for (Node* child = parent->firstChild(); child != nullptr; child = child->next)
            detachedHandles_.erase(child);
        detachedHandles_.erase(attribute);
        throw;
    }
    if (attribute != nullptr) takeOut(attribute);
    while (Node* child = parent->firstChild())
        takeOut(child);
}

void Lifetimes::clear() {
    removeChildren(document_.node());
}

void Lifetimes::move(Node* node, Node* parent, Node* before) {
    bool const goesIntoDocument = isInDocument(parent);
    if (goesIntoDocument && isInDocument(node)) return relink(document_, node, parent, before);
    if (!goesIntoDocument) return moveIntoDetached(node, parent, before);
    if (node->parent != nullptr) remove(node);
    insertBefore(document_, parent, node, before);
    detachedHandles_.erase(node); // rule 1
}

Lifetimes::Counts Lifetimes::counts() const noexcept {
    std::size_t handles = 0;
    for (auto const& [root, count] : detachedHandles_)
        handles += count;
    return {detachedHandles_.size(), handles, waiting_.size()};
}

std::size_t Lifetimes::innerHandles(Node const* root) const noexcept {
    auto const entry = detachedHandles_.find(root);
    return entry != detachedHandles_.end() ? entry->second : 0;
}

Removal::Removal(Document& document, Node* node) : lifetimes_{document.lifetimes()}, node_{node} {
    if (node_ != nullptr) lifetimes_.detachedHandles_[node_]; // the place for its handles
}

Removal::~Removal() {
    if (node_ != nullptr) lifetimes_.detachedHandles_.erase(node_);
}

void Removal::run() noexcept {
    Node* const node = std::exchange(node_, nullptr);
    if (node == nullptr) return;
    auto const entry = lifetimes_.detachedHandles_.find(node);
    entry->second = lifetimes_.countInnerHandles(node);
    if (entry->second == 0) lifetimes_.detachedHandles_.erase(entry);
    lifetimes_.takeOut(node);
}

} // namespace tibxml::tree
