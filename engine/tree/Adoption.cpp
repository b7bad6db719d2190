// Nodes that move between documents: what they leave and what they find.
#include <tree/Lifetimes.h>

#include <utility>

#include <tree/Cloning.h>
#include <tree/Document.h>
#include <tree/Editing.h>
#include <tree/NamespaceNodes.h>
#include <tree/Namespaces.h>
#include <tree/Navigation.h>

namespace tibxml::tree {

// The nodes that something refers to, with their copies: a handle, or, while the document is
// pinned, perhaps a plain pointer. Nodes of the namespace axis go with their elements.
struct Lifetimes::Moves final : CloneObserver {
    Moves(Document const& from, Document& to) noexcept : source{from}, target{to} {}

    void copied(Node* original, Node* copy) override {
        add(original, copy);
        Node* space = NamespaceNodes::firstOf(source, original);
        for (; space != nullptr; space = space->next)
            add(space, NamespaceNodes::get(target, copy, declaredPrefix(space), space->text()));
    }

    void add(Node* original, Node* copy) {
        if (original->handle != nullptr) {
            handles.emplace_back(original, copy);
        } else if (source.lifetimes().isPinned()) {
            pinned.emplace_back(original, copy);
        }
    }

    // The objects that pinned pointers will lead to.
    Objects objects(HandleMover& mover) const {
        Objects found;
        for (auto const* nodes : {&pinned, &handles}) {
            for (auto const& [from, copy] : *nodes)
                found.emplace(from, mover.objectFor(from, copy));
        }
        return found;
    }

    Document const& source;
    Document& target;
    std::vector<std::pair<Node*, Node*>> handles;
    std::vector<std::pair<Node*, Node*>> pinned;
};

// Everything about a move that may fail but for the copying: the copy is destroyed then.
void Lifetimes::prepareMove(Lifetimes& source, Node* copy, Moves const& moves, HandleMover& mover) {
    try {
        // The root's handle, which rule 2 leaves out, counts too until nothing can fail, so that
        // the copy stays when objects that were just made for it go again.
        detachedHandles_[copy] = moves.handles.size();
        if (source.isPinned()) {
            Objects objects = moves.objects(mover);
            source.movedAway_.reserve(source.movedAway_.size() + objects.size());
            source.movedAway_.merge(objects);
        }
        if (--detachedHandles_[copy] == 0) detachedHandles_.erase(copy);
    } catch (...) {
        detachedHandles_.erase(copy);
        destroy(document_, copy);
        throw;
    }
}

// Takes out and gives back a subtree whose nodes went to another document, with as many handles.
void Lifetimes::discard(Node* subtree, std::size_t handlesGone) noexcept {
    Node* const root = isInDocument(subtree) ? nullptr : rootOf(subtree);
    if (root == subtree) {
        detachedHandles_.erase(subtree);
    } else {
        unlink(document_, subtree);
        if (root != nullptr && handlesGone != 0) releaseInnerHandles(root, handlesGone);
    }
    dispose(subtree);
}

Node* Lifetimes::adopt(Document& source, Node* original, HandleMover& mover) {
    Moves moves{source, document_};
    Node* const copy = clone(document_, source, original, CloneDepth::deep, &moves);
    prepareMove(source.lifetimes(), copy, moves, mover);
    for (auto const& [from, to] : moves.handles)
        mover.moveHandle(from, to);
    source.lifetimes().discard(original, moves.handles.size());
    return copy;
}

void Lifetimes::noteMoved(Node const* node, std::shared_ptr<void> object) {
    movedAway_.emplace(node, std::move(object));
}

void* Lifetimes::movedTo(Node const* node) const noexcept {
    if (movedAway_.empty()) return nullptr;
    auto const entry = movedAway_.find(node);
    return entry != movedAway_.end() ? entry->second.get() : nullptr;
}

} // namespace tibxml::tree
