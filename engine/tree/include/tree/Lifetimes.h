// When detached nodes are given back to the arena: as soon as no handle refers to any node of their
// subtree.
#pragma once

#include <tree/Document.h>

namespace tibxml::tree {

// Must be told of every handle that starts or stops (handle just cleared) referring to a node. A
// detached subtree whose last handle stopped is destroyed. The first throws std::bad_alloc.
void handleAttached(Document& document, Node* node);
void handleReleased(Document& document, Node* node) noexcept;

// The latter for a node of the namespace axis.
void namespaceHandleReleased(Document& document, Node* node) noexcept;

// Between these no node's memory is given back, so that plain pointers to nodes (in the result of a
// query) stay valid whatever is removed.
void pin(Document& document) noexcept;
void unpin(Document& document) noexcept;

// Takes a node (or attribute) out of its parent and destroys its subtree unless a handle refers
// into it; then it lives on as a detached subtree. Throws std::bad_alloc before anything changed.
void remove(Document& document, Node* node);

// Puts a node, wherever it is in this document, into the list of a parent in front of `before`,
// last when that is null. An attribute goes among the parent's attributes. Throws std::bad_alloc
// before anything changed. Moving within the document's tree takes the same time whatever the node
// holds.
void move(Document& document, Node* node, Node* parent, Node* before);

// A removal that can no longer fail: for edits that put something into a node's place first.
// Between making one and running it nodes may leave the subtree.
class Removal {
public:
    // Of nothing, when the node is null. Throws std::bad_alloc.
    Removal(Document& document, Node* node);
    Removal(Removal const&) = delete;
    Removal& operator=(Removal const&) = delete;

    // Without run() nothing has happened.
    ~Removal();

    void run() noexcept;

private:
    Document& document_;
    Node* node_;
};

// Takes out and gives back a subtree whose nodes went to another document, with as many handles.
void discard(Document& document, Node* subtree, std::size_t handlesGone) noexcept;

// Removes all children of a node in this way, and one of its attributes unless that is null.
void removeChildren(Document& document, Node* parent, Node* attribute = nullptr);

// Gives a subtree without parent and without handles back to the arena.
void destroy(Document& document, Node* subtree) noexcept;

// Empties the document: what has handles lives on detached.
void clear(Document& document);

} // namespace tibxml::tree
