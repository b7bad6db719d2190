#include "Adoption.h"

#include "DocumentObject.h"

namespace tibxml::com {

namespace {

// What stands for a moved node in the document that it left: a reference to its object.
std::shared_ptr<void> tracked(IXMLDOMNode* object) {
    auto reference = ComPtr<IXMLDOMNode>::adopt(object);
    return {reference.get(), [reference](void*) {}};
}

std::shared_ptr<void> tracked(NodeHandle& handle) {
    handle.AddRef();
    return tracked(handle.asNode());
}

// Moves node objects into a document.
class ObjectMover final : public tree::HandleMover {
public:
    ObjectMover(DocumentObject& owner, tree::Document& target) noexcept
        : owner_{owner},
          target_{target} {}

    std::shared_ptr<void> objectFor(tree::Node* from, tree::Node* copy) override {
        if (from->handle != nullptr) return tracked(*static_cast<NodeHandle*>(from->handle));
        return tracked(wrap(owner_, target_, copy));
    }

    void moveHandle(tree::Node* from, tree::Node* copy) noexcept override {
        static_cast<NodeHandle*>(from->handle)->moveTo(owner_, target_, copy);
    }

private:
    DocumentObject& owner_;
    tree::Document& target_;
};

} // namespace

void adoptForeign(DocumentObject& owner, tree::Document& storage, NodeHandle& handle) {
    tree::DocumentRef const source{&handle.storage()}; // the handle may have been its last
    ObjectMover mover{owner, storage};
    storage.lifetimes().adopt(*source, handle.node(), mover);
}

void leaveBehind(NodeHandle& handle) {
    tree::Lifetimes& lifetimes = handle.storage().lifetimes();
    if (lifetimes.isPinned()) lifetimes.noteMoved(handle.node(), tracked(handle));
}

IXMLDOMNode* movedNode(tree::Document const& storage, tree::Node const* node) {
    auto* const object = static_cast<IXMLDOMNode*>(storage.lifetimes().movedTo(node));
    if (object != nullptr) object->AddRef();
    return object;
}

} // namespace tibxml::com
