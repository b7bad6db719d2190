#include "Adoption.h"

#include <unordered_map>
#include <utility>
#include <vector>

#include <tree/Cloning.h>
#include <tree/Lifetimes.h>
#include <tree/NamespaceNodes.h>
#include <tree/Namespaces.h>

#include "DocumentObject.h"

namespace tibxml::com {

namespace {

using Move = std::pair<tree::Node*, tree::Node*>; // from, to

// Which nodes somebody refers to: by a handle, or, while the document is pinned, any of them. Nodes
// of the namespace axis go with their elements.
class Moves final : public tree::CloneObserver {
public:
    Moves(tree::Document const& source, tree::Document& target) noexcept
        : source_{source},
          target_{target} {}

    void copied(tree::Node* original, tree::Node* copy) override {
        add(original, copy);
        tree::Node* space = tree::NamespaceNodes::firstOf(source_, original);
        for (; space != nullptr; space = space->next) {
            add(space, tree::NamespaceNodes::get(target_, copy, tree::declaredPrefix(space),
                                                 space->text()));
        }
    }

    std::vector<Move> handles;
    std::vector<Move> pinned;

private:
    void add(tree::Node* original, tree::Node* copy) {
        if (original->handle != nullptr) {
            handles.emplace_back(original, copy);
        } else if (source_.pins != 0) {
            pinned.emplace_back(original, copy);
        }
    }

    tree::Document const& source_;
    tree::Document& target_;
};

// What stands for a moved node in the document that it left: a reference to its object.
std::shared_ptr<void> tracked(IXMLDOMNode* object) {
    auto reference = ComPtr<IXMLDOMNode>::adopt(object);
    return {reference.get(), [reference](void*) {}};
}

using Objects = std::unordered_map<tree::Node const*, std::shared_ptr<void>>;

std::shared_ptr<void> tracked(NodeHandle& handle) {
    handle.AddRef();
    return tracked(handle.asNode());
}

// The objects that pinned pointers will lead to.
Objects objectsOf(Moves const& moves, DocumentObject& owner, tree::Document& target) {
    Objects objects;
    for (auto const& [from, to] : moves.pinned)
        objects.emplace(from, tracked(wrap(owner, target, to)));
    for (auto const& [from, to] : moves.handles)
        objects.emplace(from, tracked(*static_cast<NodeHandle*>(from->handle)));
    return objects;
}

void noteMoved(tree::Document& source, Objects objects) {
    source.movedAway.reserve(source.movedAway.size() + objects.size());
    source.movedAway.merge(objects);
}

// Everything about a move that may fail but for the copying: the copy is destroyed then. The top
// has a handle, which needs no entry.
void prepare(tree::Document& source, tree::Node* copy, Moves const& moves, DocumentObject& owner,
             tree::Document& target) {
    try {
        // The top's counts too until nothing can fail, so that objects which go again leave the
        // copy.
        target.detachedHandles[copy] = moves.handles.size();
        if (source.pins != 0) noteMoved(source, objectsOf(moves, owner, target));
        if (--target.detachedHandles[copy] == 0) target.detachedHandles.erase(copy);
    } catch (...) {
        target.detachedHandles.erase(copy);
        tree::destroy(target, copy);
        throw;
    }
}

} // namespace

void adoptForeign(DocumentObject& owner, tree::Document& storage, NodeHandle& handle) {
    tree::DocumentRef const source{&handle.storage()};
    tree::Node* const original = handle.node();
    Moves moves{*source, storage};
    tree::Node* const copy =
        tree::clone(storage, *source, original, tree::CloneDepth::deep, &moves);
    prepare(*source, copy, moves, owner, storage);
    for (auto const& [from, to] : moves.handles)
        static_cast<NodeHandle*>(from->handle)->moveTo(owner, storage, to);
    tree::discard(*source, original, moves.handles.size());
}

void leaveBehind(NodeHandle& handle) {
    tree::Document& storage = handle.storage();
    if (storage.pins != 0) storage.movedAway.emplace(handle.node(), tracked(handle));
}

IXMLDOMNode* movedNode(tree::Document& storage, tree::Node const* node) {
    if (storage.movedAway.empty()) return nullptr;
    auto const entry = storage.movedAway.find(node);
    if (entry == storage.movedAway.end()) return nullptr;
    auto* const object = static_cast<IXMLDOMNode*>(entry->second.get());
    object->AddRef();
    return object;
}

} // namespace tibxml::com
