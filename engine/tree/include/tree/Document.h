// A document's storage: arena, names and the document node. It lives while anything refers to it
// (the engine's document object and every node handle), counted by itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include <tree/Arena.h>
#include <tree/Name.h>
#include <tree/Node.h>

namespace tibxml::tree {

class NamespaceNodes;

class Document {
public:
    // A new empty document with one reference, owned by the caller. Throws std::bad_alloc.
    static Document* create();

    Document(Document const&) = delete;
    Document& operator=(Document const&) = delete;

    void addReference() noexcept { ++references_; }

    void release() noexcept {
        if (--references_ == 0) delete this;
    }

    Node* node() const noexcept { return node_; }

    Node* documentElement() const noexcept;

    Arena& arena() noexcept { return arena_; }

    NameTable& names() noexcept { return names_; }

    NameTable const& names() const noexcept { return names_; }

    // A number that no other document of this process has or had.
    std::uint64_t serial() const noexcept { return serial_; }

    // Changes with every edit of structure, names, attributes or text.
    std::uint64_t version() const noexcept { return version_; }

    void touch() noexcept { ++version_; }

    // White-space-only text is kept when reading and written as it is.
    bool preservesWhiteSpace = false;

    // Detached subtrees stay while a handle refers to one of their nodes. Kept per root of such a
    // subtree: how many refer to other nodes than the root itself, if any; see Lifetime.h.
    std::unordered_map<Node const*, std::size_t> detachedHandles;

    // While somebody holds plain pointers to nodes, detached subtrees wait here for their disposal.
    std::size_t pins = 0;
    std::vector<Node*> awaitingDisposal;

    // And what has become of those that moved to other documents meanwhile: engine objects, which
    // only their owner knows.
    std::unordered_map<Node const*, std::shared_ptr<void>> movedAway;

    // The nodes of the namespace axis, once one was asked for; see NamespaceNodes.h.
    std::shared_ptr<NamespaceNodes> namespaceNodes;

    // What the query layer remembers about this document; valid only for the version it notes
    // itself.
    std::shared_ptr<void> queryIndex;

    // Bookkeeping of DocumentOrder.h: which tree carries valid order numbers.
    Node const* orderedRoot = nullptr;
    std::uint64_t orderedVersion = 0;

private:
    Document();
    ~Document() = default;

    std::size_t references_ = 1;
    std::uint64_t serial_;
    std::uint64_t version_ = 1;
    Arena arena_;
    NameTable names_;
    Node* node_;
};

// Owns one reference to a document.
class DocumentRef {
public:
    DocumentRef() noexcept = default;

    // Takes over a reference that the caller owns.
    static DocumentRef adopt(Document* document) noexcept {
        DocumentRef ref;
        ref.document_ = document;
        return ref;
    }

    explicit DocumentRef(Document* document) noexcept : document_{document} {
        if (document_ != nullptr) document_->addReference();
    }

    DocumentRef(DocumentRef const& other) noexcept : DocumentRef{other.document_} {}

    DocumentRef(DocumentRef&& other) noexcept : document_{other.document_} {
        other.document_ = nullptr;
    }

    DocumentRef& operator=(DocumentRef other) noexcept {
        Document* mine = document_;
        document_ = other.document_;
        other.document_ = mine;
        return *this;
    }

    ~DocumentRef() {
        if (document_ != nullptr) document_->release();
    }

    Document* get() const noexcept { return document_; }

    Document* operator->() const noexcept { return document_; }

    Document& operator*() const noexcept { return *document_; }

    explicit operator bool() const noexcept { return document_ != nullptr; }

private:
    Document* document_ = nullptr;
};

} // namespace tibxml::tree
