#include "Adoption.h"

#include <utility>
#include <vector>

#include <tree/Cloning.h>
#include <tree/Lifetime.h>

#include "DocumentObject.h"

namespace tibxml::com {

namespace {

using Move = std::pair<tree::Node*, tree::Node*>; // from, to

// Which nodes somebody refers to: by a handle, or, while the document is pinned, any of them.
class Moves final : public tree::CloneObserver {
public:
    explicit Moves(bool isPinned) noexcept : isPinned_{isPinned} {}

    void copied(tree::Node* original, tree::Node* copy) override {
        if (original->handle != nullptr) {
            handles.emplace_back(original, copy);
        } else if (isPinned_) {
            pinned.emplace_back(original, copy);
        }
    }

    std::vector<Move> handles;
    std::vector<Move> pinned;

private:
    bool isPinned_;
};

// What stands for a moved node in the document that it left: a reference to its object.
std::shared_ptr<void> tracked(IXMLDOMNode* object) {
    auto reference = ComPtr<IXMLDOMNode>::adopt(object);
    return {reference.get(), [reference](void*) {}};
}

void followPinned(DocumentObject& owner, tree::Document& target, tree::Document& source,
                  Moves const& moves) {
    for (auto const& [from, to] : moves.pinned)
        source.movedAway.emplace(from, tracked(wrap(owner, target, to)));
    if (source.pins == 0) return;
    for (auto const& [from, to] : moves.handles) {
        auto* const handle = static_cast<NodeHandle*>(from->handle);
        handle->AddRef();
        source.movedAway.emplace(from, tracked(handle->asNode()));
    }
}

} // namespace

void adopt(DocumentObject& owner, tree::Document& storage, NodeHandle& handle) {
    if (&handle.storage() == &storage) return;
    tree::DocumentRef const source{&handle.storage()};
    tree::Node* const original = handle.node();
    Moves moves{source->pins != 0};
    tree::Node* const copy =
        tree::clone(storage, *source, original, tree::CloneDepth::deep, &moves);
    storage.detachedHandles[copy] = moves.handles.size();
    followPinned(owner, storage, *source, moves);
    for (auto const& [from, to] : moves.handles)
        static_cast<NodeHandle*>(from->handle)->moveTo(owner, storage, to);
    tree::discard(*source, original, moves.handles.size());
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
