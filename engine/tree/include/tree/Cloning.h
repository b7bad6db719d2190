// Copies of subtrees, within a document or into another one.
#pragma once

#include <tree/Document.h>

namespace tibxml::tree {

enum class CloneDepth { shallow, deep };

// Told of each node and its copy, attributes included.
class CloneObserver {
public:
    virtual void copied(Node* original, Node* copy) = 0;

protected:
    ~CloneObserver() = default;
};

// A detached copy, owned by `target`, of a node that is not a document: with its attributes, and
// with its descendants when deep. Names keep their prefixes and namespaces. Throws std::bad_alloc,
// and what the observer throws, and then leaves nothing.
Node* clone(Document& target, Document const& source, Node* node, CloneDepth depth,
            CloneObserver* observer = nullptr);

} // namespace tibxml::tree
