// A document's storage: arena, names and the document node. It lives while anything refers to it
// (the engine's document object and every node handle), counted by itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include <tree/Arena.h>
#include <tree/Lifetimes.h>
#include <tree/Name.h>
#include <tree/Node.h>

namespace tibxml::tree {

class Document;
class NamespaceNodes;

// What the query layer remembers about a document: one object of the class that derives from this,
// which alone reaches its place there. It notes itself for which version it holds.
class QueryMemory {
public:
    QueryMemory() = default;
    QueryMemory(QueryMemory const&) = delete;
    QueryMemory& operator=(QueryMemory const&) = delete;
    virtual ~QueryMemory() = default;

protected:
    // Null until something is worth remembering.
    static std::unique_ptr<QueryMemory>& slotOf(Document& document) noexcept;
};

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

    // Whether white-space-only text is kept when reading and written as it is. What was dropped
    // before this was set stays dropped.
    bool preservesWhiteSpace() const noexcept { return preservesWhiteSpace_; }

    void setPreservesWhiteSpace(bool preserves) noexcept { preservesWhiteSpace_ = preserves; }

    // Gives every node of the tree that holds `within` a number in Node::order that grows in
    // document order: element, its attributes, its children. They are valid until the next edit and
    // for one tree at a time. O(size of the tree) unless they are still valid.
    void ensureOrder(Node const* within) noexcept;

    bool hasQueryMemory() const noexcept { return queryMemory_ != nullptr; }

    // What keeps nodes alive; see Lifetimes.h.
    Lifetimes& lifetimes() noexcept { return lifetimes_; }

    Lifetimes const& lifetimes() const noexcept { return lifetimes_; }

    // Whether the namespace axis has nodes here; see NamespaceNodes.h.
    bool hasNamespaceNodes() const noexcept { return namespaceNodes_ != nullptr; }

private:
    friend class QueryMemory;
    friend class NamespaceNodes;

    Document();
    ~Document();

    std::size_t references_ = 1;
    std::uint64_t serial_;
    std::uint64_t version_ = 1;
    Arena arena_;
    NameTable names_;
    Node* node_;
    Node const* orderedRoot_ = nullptr; // of the tree that has numbers, valid for:
    std::uint64_t orderedVersion_ = 0;
    Lifetimes lifetimes_{*this};
    std::unique_ptr<NamespaceNodes> namespaceNodes_; // once the axis was used
    std::unique_ptr<QueryMemory> queryMemory_;
    bool preservesWhiteSpace_ = false;
};

inline std::unique_ptr<QueryMemory>& QueryMemory::slotOf(Document& document) noexcept {
    return document.queryMemory_;
}

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

// Both nodes must lie in the tree that Document::ensureOrder was last called for.
inline bool comesBefore(Node const* a, Node const* b) noexcept {
    return a->order < b->order;
}

} // namespace tibxml::tree
