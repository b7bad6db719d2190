#include "NodeHandle.h"

#include <tree/Lifetimes.h>
#include <tree/NamespaceNodes.h>

#include "DocumentObject.h"
#include "Failure.h"
#include "NodeObjects.h"

namespace tibxml::com {

void NodeHandle::attach(tree::Document& storage, tree::Node* node) {
    storage.lifetimes().handleAttached(node);
    node->handle = this;
    storage_ = tree::DocumentRef{&storage};
    node_ = node;
}

void NodeHandle::detach() noexcept {
    if (node_ == nullptr) return;
    node_->handle = nullptr;
    storage_->lifetimes().handleReleased(node_);
    node_ = nullptr;
}

void NodeHandle::detachNamespace() noexcept {
    node_->handle = nullptr;
    storage_->lifetimes().namespaceHandleReleased(node_);
    node_ = nullptr;
}

void NodeHandle::moveTo(DocumentObject& owner, tree::Document& storage, tree::Node* node) noexcept {
    node_->handle = nullptr;
    node->handle = this;
    node_ = node;
    storage_ = tree::DocumentRef{&storage};
    owner_ = ComPtr<DocumentObject>{&owner}; // last: the old one may go with all that it has
}

ComPtr<NodeHandle> handleOf(IUnknown* object) {
    void* handle = nullptr;
    if (object == nullptr || FAILED(object->QueryInterface(IID_NodeHandle, &handle)))
        throw Failure{E_INVALIDARG, "the object is not a node of this engine"};
    return ComPtr<NodeHandle>::adopt(static_cast<NodeHandle*>(handle));
}

IXMLDOMNode* wrap(DocumentObject& owner, tree::Document& storage, tree::Node* node) {
    if (node == nullptr) return nullptr;
    if (node->handle != nullptr) {
        auto* const handle = static_cast<NodeHandle*>(node->handle);
        handle->AddRef();
        return handle->asNode();
    }
    switch (node->kind) {
    case tree::NodeKind::element: return new (owner) ElementObject{owner, storage, node};
    case tree::NodeKind::attribute:
        if (tree::isNamespaceNode(node)) return new (owner) NamespaceObject{owner, storage, node};
        return new (owner) AttributeObject{owner, storage, node};
    default: return new (owner) PlainNodeObject{owner, storage, node};
    }
}

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
