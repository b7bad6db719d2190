#include <tree/Lifetime.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include <tree/Editing.h>
#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

// Handles in a subtree, attributes included.
std::size_t countHandles(Node const* subtree) noexcept {
    std::size_t count = 0;
    for (Node const* node = subtree; node != nullptr; node = nextInSubtree(node, subtree)) {
        count += node->handle != nullptr ? 1 : 0;
        for (Node const* a = node->firstAttribute(); a != nullptr; a = a->next)
            count += a->handle != nullptr ? 1 : 0;
    }
    return count;
}

void freeOne(Document& document, Node* node) noexcept {
    if (!node->hasChildList() && node->inlineLength == Node::outOfLine)
        document.arena().freeText({node->content.longText.data, node->content.longText.capacity});
    document.arena().freeNode(node);
}

void freeAttributes(Document& document, Node* element) noexcept {
    for (Node* a = element->firstAttribute(); a != nullptr;) {
        Node* const following = a->next;
        freeOne(document, a);
        a = following;
    }
}

Node* deepestFirst(Node* node) noexcept {
    while (Node* child = node->firstChild())
        node = child;
    return node;
}

// Everything about a removal that may fail: done before anything changes.
void noteHandles(Document& document, Node const* subtree) {
    if (std::size_t const handles = countHandles(subtree); handles != 0)
        document.detachedHandles[subtree] = handles;
}

// Gives back a detached subtree without handles, now or when the last pin is gone.
void dispose(Document& document, Node* subtree) noexcept {
    if (document.pins == 0) return destroy(document, subtree);
    if ((subtree->flags & awaitsDisposal) != 0) return;
    try {
        document.awaitingDisposal.push_back(subtree);
        subtree->flags |= awaitsDisposal;
    } catch (std::bad_alloc const&) {
        return; // it stays until the document goes
    }
}

// Handles of a detached tree are gone, or have left it within a part of it.
void releaseHandles(Document& document, Node* root, std::size_t count) noexcept {
    auto const entry = document.detachedHandles.find(root);
    entry->second -= count;
    if (entry->second != 0) return;
    document.detachedHandles.erase(entry);
    dispose(document, root);
}

// The second half of a removal, behind noteHandles.
void takeOut(Document& document, Node* subtree) noexcept {
    auto const entry = document.detachedHandles.find(subtree);
    std::size_t const handles = entry != document.detachedHandles.end() ? entry->second : 0;
    Node* const root = rootOf(subtree);
    unlink(document, subtree);
    if (handles == 0) {
        dispose(document, subtree);
    } else if (root != document.node()) {
        releaseHandles(document, root, handles);
    }
}

} // namespace

void handleAttached(Document& document, Node* node) {
    Node const* const root = rootOf(node);
    if (root != document.node()) ++document.detachedHandles[root];
}

void handleReleased(Document& document, Node* node) noexcept {
    Node* const root = rootOf(node);
    if (root != document.node()) releaseHandles(document, root, 1);
}

void settle(Document& document, Node* subtree) noexcept {
    auto entry = document.detachedHandles.extract(subtree);
    Node const* const root = rootOf(subtree);
    if (entry.empty() || root == document.node()) return;
    auto const rootEntry = document.detachedHandles.find(root);
    if (rootEntry != document.detachedHandles.end()) {
        rootEntry->second += entry.mapped();
    } else {
        entry.key() = root; // putting back what was just taken out allocates nothing
        document.detachedHandles.insert(std::move(entry));
    }
}

void pin(Document& document) noexcept {
    ++document.pins;
}

void unpin(Document& document) noexcept {
    if (--document.pins != 0) return;
    // What was attached again in the meantime, or got a handle, is nobody's to dispose of. That is
    // settled for all before any of them goes, because one may lie in another by now.
    auto& waiting = document.awaitingDisposal;
    auto const stays = [&](Node* node) {
        node->flags &= static_cast<std::uint8_t>(~awaitsDisposal);
        return node->parent != nullptr || document.detachedHandles.contains(node);
    };
    waiting.erase(std::remove_if(waiting.begin(), waiting.end(), stays), waiting.end());
    for (Node* node : waiting)
        destroy(document, node);
    waiting.clear();
    document.movedAway.clear();
}

void remove(Document& document, Node* node) {
    noteHandles(document, node);
    takeOut(document, node);
}

void move(Document& document, Node* node, Node* parent, Node* before) {
    // Within the document itself nobody counts handles, so that the cost does not depend on the
    // size of what is moved.
    bool const staysAttached = rootOf(node) == document.node() && rootOf(parent) == document.node();
    if (staysAttached) {
        unlink(document, node);
    } else if (node->parent != nullptr) {
        remove(document, node); // somebody who moves it has a handle on it, so it lives
    }
    if (before != nullptr) {
        insertBefore(document, parent, node, before);
    } else if (node->is(NodeKind::attribute)) {
        appendAttribute(document, parent, node);
    } else {
        appendChild(document, parent, node);
    }
    if (!staysAttached) settle(document, node);
}

Removal::Removal(Document& document, Node* node) : document_{document}, node_{node} {
    if (node_ != nullptr) document_.detachedHandles[node_]; // the place for its handles
}

Removal::~Removal() {
    if (node_ != nullptr) document_.detachedHandles.erase(node_);
}

void Removal::run() noexcept {
    Node* const node = std::exchange(node_, nullptr);
    if (node == nullptr) return;
    auto const entry = document_.detachedHandles.find(node);
    entry->second = countHandles(node);
    if (entry->second == 0) document_.detachedHandles.erase(entry);
    takeOut(document_, node);
}

void discard(Document& document, Node* subtree, std::size_t handlesGone) noexcept {
    Node* const root = rootOf(subtree);
    if (root == subtree) {
        document.detachedHandles.erase(subtree);
    } else {
        unlink(document, subtree);
        if (root != document.node() && handlesGone != 0)
            releaseHandles(document, root, handlesGone);
    }
    dispose(document, subtree);
}

void removeChildren(Document& document, Node* parent, Node* attribute) {
    try {
        if (attribute != nullptr) noteHandles(document, attribute);
        for (Node* child = parent->firstChild(); child != nullptr; child = child->next)
            noteHandles(document, child);
    } catch (...) {
        for (Node* child = parent->firstChild(); child != nullptr; child = child->next)
            document.detachedHandles.erase(child);
        document.detachedHandles.erase(attribute);
        throw;
    }
    if (attribute != nullptr) takeOut(document, attribute);
    while (Node* child = parent->firstChild())
        takeOut(document, child);
}

void destroy(Document& document, Node* subtree) noexcept {
    // Children before parents: every node is left through its next sibling or its parent, which
    // are read before the node goes.
    Node* node = deepestFirst(subtree);
    while (node != subtree) {
        Node* const following = node->next != nullptr ? deepestFirst(node->next) : node->parent;
        freeAttributes(document, node);
        freeOne(document, node);
        node = following;
    }
    freeAttributes(document, subtree);
    freeOne(document, subtree);
}

void clear(Document& document) {
    removeChildren(document, document.node());
}

} // namespace tibxml::tree
