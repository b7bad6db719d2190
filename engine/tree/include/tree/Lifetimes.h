// When the memory of nodes goes back to the arena: as soon as nothing can reach them any more.
//
// Nodes of the document's tree live as long as that. What is taken out of it becomes a detached
// subtree, which lives while any of its nodes has a handle (Node::handle, an engine object), and
// while the document is pinned: the result of a query holds plain pointers to nodes. One object per
// document decides this, and these hold between its calls:
//
// 1. Nothing is counted for nodes of the document's tree. The flag inDocument on each of them says
//    so in one step; see isInDocument().
// 2. detachedHandles_ has an entry for the root of a detached subtree exactly when nodes of the
//    subtree other than the root have handles, and it is their number. Attributes and the nodes of
//    the namespace axis count for their element. (A Removal holds a place, which may say 0.)
// 3. A detached subtree whose root has neither handle nor entry is gone, or it waits for the last
//    pin: then it is listed in waiting_, once, and its root has the flag awaitsDisposal. Only if
//    memory ran out for the list it stays unlisted until the document goes.
// 4. movedAway_ is empty unless the document is pinned.
//
// Obvious alternatives, and what speaks against them. A count in every node: nodes are full cache
// lines, and every edit would have to climb. Handles that hold their parents' handles: objects for
// nodes that no caller asked for. A look through the subtree whenever a handle goes: holding n
// nodes of one detached subtree would cost n * n. As it is, detaching and attaching walk over the
// subtree once, and a handle within a detached subtree climbs to its root. The root's own handle is
// seen at the root, so that a node which is created, held, put somewhere and let go, as most are,
// makes no entry.
#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include <tree/Node.h>

namespace tibxml::tree {

class Document;

/// Moves handles when their nodes go to another document: what the owner of the handles does.
class HandleMover {
public:
    /// What pinned pointers to `from` lead to once it has moved: its holder keeps the handle
    /// of its copy alive, which is made if there is none. Throws std::bad_alloc.
    virtual std::shared_ptr<void> objectFor(Node* from, Node* copy) = 0;

    /// Makes the handle of a node refer to the copy of that node.
    virtual void moveHandle(Node* from, Node* copy) noexcept = 0;

protected:
    ~HandleMover() = default;
};

class Lifetimes {
public:
    explicit Lifetimes(Document& document) noexcept : document_{document} {}

    Lifetimes(Lifetimes const&) = delete;
    Lifetimes& operator=(Lifetimes const&) = delete;

    /// To be called for every handle that starts to refer to a node, and for every one that stops,
    /// with Node::handle null by then. A detached subtree is destroyed with its last handle. The
    /// first throws std::bad_alloc.
    void handleAttached(Node* node);
    void handleReleased(Node* node) noexcept;

    /// The latter for a node of the namespace axis.
    void namespaceHandleReleased(Node* node) noexcept;

    /// Between these two no node's memory is given back, so that plain pointers to nodes stay valid
    /// whatever is removed. They nest.
    void pin() noexcept { ++pins_; }

    void unpin() noexcept;

    bool isPinned() const noexcept { return pins_ != 0; }

    /// Takes a node (or attribute) out of its parent and destroys its subtree unless a handle
    /// refers into it; then it lives on as a detached subtree. Throws std::bad_alloc before
    /// anything changed.
    void remove(Node* node);

    /// Removes all children of a node in this way, and one of its attributes unless that is null.
    void removeChildren(Node* parent, Node* attribute = nullptr);

    /// Empties the document: what has handles lives on detached. Throws std::bad_alloc before
    /// anything changed.
    void clear();

    /// Puts a node, wherever it is in this document, into the list of a parent in front of
    /// `before`, last when that is null. An attribute goes among the parent's attributes. Throws
    /// std::bad_alloc before anything changed. Moving within the document's tree takes the same
    /// time whatever the node holds.
    void move(Node* node, Node* parent, Node* before);

    /// Makes a subtree of another document part of this one: a detached copy takes its place, to
    /// which its handles move; the original is given back when no pinned pointer refers to it. The
    /// root must have a handle. Throws std::bad_alloc before anything changed.
    Node* adopt(Document& source, Node* original, HandleMover& mover);

    /// For a pinned document: pinned pointers to a node that is about to leave will lead to this
    /// object. Throws std::bad_alloc.
    void noteMoved(Node const* node, std::shared_ptr<void> object);

    /// What noteMoved() or adopt() noted for a node; null for a node that has not moved.
    void* movedTo(Node const* node) const noexcept;

    /// The figures of rules 2 and 3, for tests.
    struct Counts {
        std::size_t detachedSubtrees; // with entries
        std::size_t handles;          // that the entries count
        std::size_t waiting;
    };

    Counts counts() const noexcept;

    /// The handles in a detached subtree but for the root's own.
    std::size_t innerHandles(Node const* root) const noexcept;

private:
    friend class Removal;

    using Objects = std::unordered_map<Node const*, std::shared_ptr<void>>;
    using HandleCounts = std::unordered_map<Node const*, std::size_t>;
    struct Moves;

    std::size_t countInnerHandles(Node const* subtree) const noexcept;
    void noteHandles(Node const* subtree);
    HandleCounts::node_type spareEntry();
    void takeOut(Node* subtree) noexcept;
    void settle(Node* subtree, HandleCounts::node_type spare) noexcept;
    void moveIntoDetached(Node* node, Node* parent, Node* before);
    void releaseInnerHandles(Node* root, std::size_t count) noexcept;
    void dispose(Node* subtree) noexcept;
    bool staysWithoutPin(Node* node) noexcept;
    void prepareMove(Lifetimes& source, Node* copy, Moves const& moves, HandleMover& mover);
    void discard(Node* subtree, std::size_t handlesGone) noexcept;

    Document& document_;
    HandleCounts detachedHandles_; // by root; rule 2
    std::size_t pins_ = 0;
    std::vector<Node*> waiting_; // rule 3
    Objects movedAway_;          // engine objects, which only their owner knows; rule 4
};

/// A removal that can no longer fail: for edits that put something into a node's place first.
/// Between making one and running it nodes may leave the subtree.
class Removal {
public:
    /// Of nothing, when the node is null. Throws std::bad_alloc.
    Removal(Document& document, Node* node);
    Removal(Removal const&) = delete;
    Removal& operator=(Removal const&) = delete;

    /// Without run() nothing has happened.
    ~Removal();

    void run() noexcept;

private:
    Lifetimes& lifetimes_;
    Node* node_;
};

} // namespace tibxml::tree
