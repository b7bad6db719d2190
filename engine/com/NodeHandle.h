// The tie between a node of a tree and the engine object through which callers see it.
//
// Three hold each other up: a node knows its handle (Node::handle) without owning it, a handle owns
// its node's storage by a counted pointer, and a node object owns the document object whose
// settings count for it by another. tree::Lifetimes is called when a handle starts and stops
// referring to a node; it never calls back but for moving handles to another document.
#pragma once

#include <TibXml/engine/IXMLDOMNode.h>
#include <tree/Document.h>

#include "ComPtr.h"

inline constexpr IID IID_NodeHandle{
    0x6B1D3C50, 0x9E0A, 0x4B7E, {0x8D, 0x52, 0x3C, 0x1F, 0x7A, 0x90, 0x24, 0xE1}};

namespace tibxml::com {

class DocumentObject;

// An interface of every node object of this engine, and of no other object: how a node that a
// caller passes in is recognised. While it lives its node refers to it, so that a node has one
// identity.
class NodeHandle : public IUnknown {
public:
    // The node object as callers see it.
    virtual IXMLDOMNode* asNode() noexcept = 0;

    tree::Node* node() const noexcept { return node_; }

    tree::Document& storage() const noexcept { return *storage_; }

    DocumentObject& owner() const noexcept { return *owner_; }

    // Makes a handle that its owner's objects hold refer to another node, which took the place of
    // its own in another document.
    void moveTo(DocumentObject& owner, tree::Document& storage, tree::Node* node) noexcept;

protected:
    NodeHandle() noexcept = default;
    ~NodeHandle() = default;

    // Says whose settings count for the node, once, after attach(). A document object, which must
    // not keep itself alive, passes a pointer that does not count and disowns it in the end. Both
    // are defined where DocumentObject is.
    inline void setOwner(ComPtr<DocumentObject> owner) noexcept;
    inline ComPtr<DocumentObject> disown() noexcept;

    // Throws std::bad_alloc.
    void attach(tree::Document& storage, tree::Node* node);
    void detach() noexcept;

    // The same for a node of the namespace axis.
    void detachNamespace() noexcept;

private:
    ComPtr<DocumentObject> owner_;
    tree::DocumentRef storage_;
    tree::Node* node_ = nullptr;
};

// The object for a node of a document, made when there is none: a new reference for the caller, or
// null for null. Throws std::bad_alloc.
IXMLDOMNode* wrap(DocumentObject& owner, tree::Document& storage, tree::Node* node);

// The same for a node beside a handle.
inline IXMLDOMNode* wrapBeside(NodeHandle& handle, tree::Node* node) {
    return wrap(handle.owner(), handle.storage(), node);
}

// The node of this engine that an object of a caller's is. Throws Failure (E_INVALIDARG) for
// null and for any other object.
ComPtr<NodeHandle> handleOf(IUnknown* object);

// Moving nodes between documents: a document never depends on another one's storage. This one is
// for a node that is known to belong to another document.
void adoptForeign(DocumentObject& owner, tree::Document& storage, NodeHandle& handle);

// Makes a node with its subtree part of another document's storage, detached there, unless it is
// already. What refers to the nodes now refers to their copies, so that callers see the same nodes
// in another document. Throws std::bad_alloc before anything changed.
inline void adopt(DocumentObject& owner, tree::Document& storage, NodeHandle& handle) {
    if (&handle.storage() != &storage) adoptForeign(owner, storage, handle);
}

// To be called for a handle that is about to refer to a node in other storage without a move:
// pinned pointers to its old node will lead to its object. Throws std::bad_alloc.
void leaveBehind(NodeHandle& handle);

// The object for a node that a pinned pointer refers to and that has moved to another document: a
// new reference for the caller; null for a node that has not.
IXMLDOMNode* movedNode(tree::Document const& storage, tree::Node const* node);

} // namespace tibxml::com

template <>
struct tibxml::platform::InterfaceTraits<tibxml::com::NodeHandle>
    : InterfaceIs<IID_NodeHandle, IUnknown> {};
