// Putting nodes into trees and taking them out, for callers: every refusal before any change.
#pragma once

#include "NodeHandle.h"

namespace tibxml::com {

// Puts a node into a parent's child list, in front of `before`, a child of that parent, or last
// when that is null. It leaves its old place, and its document if that is another one. Throws
// Failure with E_INVALIDARG when `before` is not a child of the parent and E_FAIL for what cannot
// stand there.
void insertChild(NodeHandle& parent, NodeHandle& child, NodeHandle const* before);

// Throws Failure (E_INVALIDARG) for what is not a child of the parent.
void removeChild(NodeHandle& parent, NodeHandle& child);

// Puts an element into the place of a document's root.
void setRoot(NodeHandle& document, NodeHandle& element);

// The node object in a variant; null for a variant that names none. Throws Failure (E_INVALIDARG)
// for another kind of variant and a foreign object.
ComPtr<NodeHandle> referenceIn(VARIANT const& value);

} // namespace tibxml::com
