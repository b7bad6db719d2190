// How many elements may lie within each other.
//
// Node::levels says for each element how many there are below it at most. Edits raise it, and leave
// it too high when they take the deepest element away; it is lowered when that matters. So asking
// takes a climb to the top, and a look at those parts of a subtree that were once too deep.
#pragma once

#include <tree/Node.h>

namespace tibxml::tree {

// Whether no element lies more than `maximum` deep when a node without this parent above it is put
// below that: the top of a tree is 1 deep, a document does not count. At most 256.
bool fitsBelow(Node const* parent, Node* child, unsigned maximum) noexcept;

} // namespace tibxml::tree
