// Moving nodes between documents: a document never depends on another one's storage.
#pragma once

#include "NodeHandle.h"

namespace tibxml::com {

// The same for a node that is known to belong to another document.
void adoptForeign(DocumentObject& owner, tree::Document& storage, NodeHandle& handle);

// Makes a node with its subtree part of another document's storage, detached there, unless it is
// already. What refers to the nodes now refers to their copies, so that callers see the same nodes
// in another document. Throws std::bad_alloc before anything changed.
inline void adopt(DocumentObject& owner, tree::Document& storage, NodeHandle& handle) {
    if (&handle.storage() != &storage) adoptForeign(owner, storage, handle);
}

// Must be told of a handle that is about to refer to a node in other storage without a move: pinned
// pointers to its old node will lead to its object. Throws std::bad_alloc.
void leaveBehind(NodeHandle& handle);

// The object for a node that a pinned pointer refers to and that has moved to another document: a
// new reference for the caller; null for a node that has not.
IXMLDOMNode* movedNode(tree::Document const& storage, tree::Node const* node);

} // namespace tibxml::com
