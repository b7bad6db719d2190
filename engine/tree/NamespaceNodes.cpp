#include <tree/NamespaceNodes.h>

#include <new>
#include <utility>

#include <tree/Editing.h>
#include <tree/Lifetimes.h>
#include <tree/Navigation.h>

namespace tibxml::tree {

namespace {

Name* declaringName(Document& document, std::string_view prefix) {
    return prefix.empty() ? document.names().intern({}, "xmlns", xmlnsNamespace)
                          : document.names().intern("xmlns", prefix, xmlnsNamespace);
}

// Making one is not an edit: what is known about the document stays true.
Node* newNode(Document& document, Name* name, std::string_view uri) {
    Node* const node = document.arena().newNode(NodeKind::attribute);
    node->name = name;
    node->flags = namespaceNode;
    if (uri.size() <= Node::inlineCapacity) {
        setShortText(node, uri);
        return node;
    }
    try {
        setLongText(node, uri, document.arena().newRecyclableText(uri.size()));
    } catch (...) {
        document.arena().freeNode(node);
        throw;
    }
    return node;
}

bool isWaiting(Node const* node) noexcept {
    return (node->flags & awaitsDisposal) != 0;
}

void stopWaiting(Node* node) noexcept {
    node->flags &= static_cast<std::uint8_t>(~awaitsDisposal);
}

void unlinkFrom(Node*& first, Node* node) noexcept {
    if (node != first) node->previous->next = node->next;
    Node* const after = node->next != nullptr ? node->next : first;
    after->previous = node->previous;
    if (node == first) first = node->next;
}

} // namespace

Node* NamespaceNodes::get(Document& document, Node* element, std::string_view prefix,
                          std::string_view uri) {
    if (!document.hasNamespaceNodes())
        document.namespaceNodes_ = std::make_unique<NamespaceNodes>();
    NamespaceNodes& nodes = *document.namespaceNodes_;
    Name* const name = declaringName(document, prefix);
    Node* const known = nodes.find(element, name, uri);
    return known != nullptr ? known : nodes.add(document, element, name, uri);
}

Node* NamespaceNodes::firstOf(Document const& document, Node const* element) noexcept {
    if (!document.hasNamespaceNodes()) return nullptr;
    auto const& firsts = document.namespaceNodes_->firsts_;
    auto const entry = firsts.find(element);
    return entry != firsts.end() ? entry->second : nullptr;
}

Node* NamespaceNodes::find(Node const* element, Name const* name,
                           std::string_view uri) const noexcept {
    auto const entry = firsts_.find(element);
    Node* node = entry != firsts_.end() ? entry->second : nullptr;
    while (node != nullptr && (node->name != name || node->text() != uri))
        node = node->next;
    return node;
}

Node* NamespaceNodes::add(Document& document, Node* element, Name* name, std::string_view uri) {
    Node* const node = newNode(document, name, uri);
    try {
        Node*& first = firsts_[element];
        linkLast(first, element, node);
        becomeLoose(node);
    } catch (...) {
        if (node->parent != nullptr) {
            drop(document, node);
        } else {
            destroy(document, node);
        }
        throw;
    }
    return node;
}

void NamespaceNodes::becomeLoose(Node* node) {
    loose_.push_back(node);
    node->flags |= awaitsDisposal;
}

// Takes a node out of its element's list and gives it back.
void NamespaceNodes::drop(Document& document, Node* node) noexcept {
    auto const entry = firsts_.find(node->parent);
    unlinkFrom(entry->second, node);
    if (entry->second == nullptr) firsts_.erase(entry);
    destroy(document, node);
}

void NamespaceNodes::sweepLoose(Document& document, Node const* kept) noexcept {
    bool keeps = false;
    for (Node* node : loose_) {
        if (node->handle == nullptr && node == kept) {
            keeps = true;
            continue;
        }
        stopWaiting(node);
        if (node->parent == nullptr) {
            destroy(document, node);
        } else if (node->handle == nullptr) {
            drop(document, node);
        }
    }
    loose_.resize(keeps ? 1 : 0);
    if (keeps) loose_.front() = const_cast<Node*>(kept);
}

void NamespaceNodes::release(Document& document, Node* node) noexcept {
    NamespaceNodes& nodes = *document.namespaceNodes_;
    if (!isWaiting(node)) {
        try {
            nodes.becomeLoose(node);
        } catch (std::bad_alloc const&) {
            // A pinned document keeps it until its element goes.
            if (!document.lifetimes().isPinned()) nodes.drop(document, node);
        }
    }
    sweep(document);
}

void NamespaceNodes::forgetBelow(Document& document, Node* subtree) noexcept {
    if (firsts_.empty()) return;
    for (Node* element = subtree; element != nullptr; element = nextInSubtree(element, subtree)) {
        auto const entry = firsts_.find(element);
        if (entry == firsts_.end()) continue;
        for (Node* node = entry->second; node != nullptr;) {
            Node* const following = node->next;
            node->parent = nullptr;
            if (!isWaiting(node)) destroy(document, node);
            node = following;
        }
        firsts_.erase(entry);
    }
}

std::size_t NamespaceNodes::countHandles(Document const& document, Node const* subtree) noexcept {
    if (!document.hasNamespaceNodes() || document.namespaceNodes_->firsts_.empty()) return 0;
    std::size_t count = 0;
    for (Node const* node = subtree; node != nullptr; node = nextInSubtree(node, subtree)) {
        for (Node const* n = firstOf(document, node); n != nullptr; n = n->next)
            count += n->handle != nullptr ? 1 : 0;
    }
    return count;
}

} // namespace tibxml::tree
