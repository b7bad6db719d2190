#include <tree/Lifetimes.h>

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>

#include <tree/Editing.h>
#include <tree/NamespaceNodes.h>
#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

// A detached subtree lives as long as its root has a handle or Document::detachedHandles counts
// some on other nodes of it. So a lone node that is created, put somewhere and let go costs no
// entry.

using Entry = std::unordered_map<Node const*, std::size_t>::node_type;

std::size_t ownHandle(Node const* node) noexcept {
    return node->handle != nullptr ? 1 : 0;
}

// Handles in a subtree but for the one of its root, attributes and namespace nodes included.
std::size_t countInnerHandles(Document const& document, Node const* subtree) noexcept {
    std::size_t count =
        document.namespaceNodes != nullptr ? NamespaceNodes::countHandles(document, subtree) : 0;
    for (Node const* node = subtree; node != nullptr; node = nextInSubtree(node, subtree)) {
        count += ownHandle(node);
        for (Node const* a = node->firstAttribute(); a != nullptr; a = a->next)
            count += ownHandle(a);
    }
    return count - ownHandle(subtree);
}

// An entry to be put in later without allocating.
Entry spareEntry(Document& document) {
    document.detachedHandles.try_emplace(nullptr);
    return document.detachedHandles.extract(nullptr);
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
    if (std::size_t const handles = countInnerHandles(document, subtree); handles != 0)
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

// Handles within a detached tree are gone, or have left it with a part of it.
void releaseInnerHandles(Document& document, Node* root, std::size_t count) noexcept {
    auto const entry = document.detachedHandles.find(root);
    entry->second -= count;
    if (entry->second != 0) return;
    document.detachedHandles.erase(entry);
    if (root->handle == nullptr) dispose(document, root);
}

// The second half of a removal, behind noteHandles.
void takeOut(Document& document, Node* subtree) noexcept {
    auto const entry = document.detachedHandles.find(subtree);
    std::size_t const inner = entry != document.detachedHandles.end() ? entry->second : 0;
    std::size_t const handles = inner + ownHandle(subtree);
    Node* const detachedRoot = isInDocument(subtree) ? nullptr : rootOf(subtree);
    unlink(document, subtree);
    if (handles == 0) {
        dispose(document, subtree);
    } else if (detachedRoot != nullptr) {
        releaseInnerHandles(document, detachedRoot, handles);
    }
}

// A detached subtree was put into another one: its handles count there.
void settle(Document& document, Node* subtree, Entry spare) noexcept {
    Entry const entry = document.detachedHandles.extract(subtree);
    std::size_t const handles = ownHandle(subtree) + (entry.empty() ? 0 : entry.mapped());
    if (handles == 0) return;
    Node const* const root = rootOf(subtree);
    auto const rootEntry = document.detachedHandles.find(root);
    if (rootEntry != document.detachedHandles.end()) {
        rootEntry->second += handles;
        return;
    }
    spare.key() = root;
    spare.mapped() = handles;
    document.detachedHandles.insert(std::move(spare));
}

// Somebody who moves nodes has handles on them, so both trees live on.
void moveIntoDetached(Document& document, Node* node, Node* parent, Node* before) {
    Entry spare = spareEntry(document);
    if (node->parent != nullptr) remove(document, node);
    insertBefore(document, parent, node, before);
    settle(document, node, std::move(spare));
}

} // namespace

void handleAttached(Document& document, Node* node) {
    if (isInDocument(node)) return;
    Node const* const root = rootOf(node);
    if (root != node) ++document.detachedHandles[root];
}

void handleReleased(Document& document, Node* node) noexcept {
    if (isInDocument(node)) return;
    Node* const root = rootOf(node);
    if (root != node) return releaseInnerHandles(document, root, 1);
    if (!document.detachedHandles.contains(root)) dispose(document, root);
}

void namespaceHandleReleased(Document& document, Node* node) noexcept {
    Node* const element = node->parent;
    NamespaceNodes::release(document, node);
    if (!isInDocument(element)) releaseInnerHandles(document, rootOf(element), 1);
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
        return node->parent != nullptr || node->handle != nullptr ||
               document.detachedHandles.contains(node);
    };
    waiting.erase(std::remove_if(waiting.begin(), waiting.end(), stays), waiting.end());
    for (Node* node : waiting)
        destroy(document, node);
    waiting.clear();
    NamespaceNodes::sweep(document);
    document.movedAway.clear();
}

void remove(Document& document, Node* node) {
    noteHandles(document, node);
    takeOut(document, node);
}

void move(Document& document, Node* node, Node* parent, Node* before) {
    bool const goesIntoDocument = isInDocument(parent);
    if (goesIntoDocument && isInDocument(node)) return relink(document, node, parent, before);
    if (!goesIntoDocument) return moveIntoDetached(document, node, parent, before);
    if (node->parent != nullptr) remove(document, node);
    insertBefore(document, parent, node, before);
    document.detachedHandles.erase(node); // nobody counts here
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
    entry->second = countInnerHandles(document_, node);
    if (entry->second == 0) document_.detachedHandles.erase(entry);
    takeOut(document_, node);
}

void discard(Document& document, Node* subtree, std::size_t handlesGone) noexcept {
    Node* const root = isInDocument(subtree) ? nullptr : rootOf(subtree);
    if (root == subtree) {
        document.detachedHandles.erase(subtree);
    } else {
        unlink(document, subtree);
        if (root != nullptr && handlesGone != 0) releaseInnerHandles(document, root, handlesGone);
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
    if (document.namespaceNodes != nullptr) NamespaceNodes::forget(document, subtree);
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
