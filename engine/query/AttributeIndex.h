// Attributes by name and value: one look-up, the predicate `[@k='v']`, and an index for long runs
// of siblings.
//
// `item[@id='7']` is how programs find things in documents, often once per item. A walk over the
// siblings costs as much as their number each time. An index costs about as much as one such walk
// to make, and is worth nothing after the next change of the document. So nothing is built ahead
// and nothing is kept up to date:
//
// - A look-up walks, and most end early. A walk that passes `longRun` members leaves a note.
// - The second long walk over a run, if the document has not changed since, makes the index and
//   goes on from it. Later look-ups start there. A hit near the start never pays for an index, and
//   a document that changes between look-ups never gets one.
// - Changes do not touch indexes. Each change counts up Document::version(), and the first look-up
//   after it drops them all. Keeping indexes right would make every edit cost more instead.
//
// Invariants: an index gives the same nodes in the same order as the walk. It points into the tree
// and is used only while the version that it was made for is current. A reader shares its
// ownership, because a predicate that runs between two of its nodes may make the document forget
// it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <tree/Document.h>
#include <tree/Name.h>
#include <tree/Node.h>

#include "Evaluation.h"

namespace tibxml::query {

/// `expanded` is a record that stands for an expanded name, or null. Returns null when there is no
/// such attribute and for nodes that are not elements.
inline tree::Node* attributeNamed(tree::Node const* element, tree::Name const* expanded) noexcept {
    for (tree::Node* a = element->firstAttribute(); a != nullptr; a = a->next)
        if (a->name->expanded == expanded) return a;
    return nullptr;
}

/// `@k='v'`, the most frequent of all predicates.
struct AttributeEquals {
    std::uint32_t name; // by the number that NameResolution gave
    std::string value;

    bool holds(Evaluation const& evaluation, tree::Node const* node) const noexcept {
        tree::Node const* const attribute = attributeNamed(node, evaluation.names[name]);
        return attribute != nullptr && attribute->text() == value &&
               !attribute->name->declaresNamespace;
    }
};

/// The children of one parent that have one name, told apart by one attribute.
struct SiblingRun {
    tree::Node const* parent = nullptr;
    tree::Name const* element = nullptr; // records that stand for expanded names
    tree::Name const* attribute = nullptr;

    bool operator==(SiblingRun const&) const noexcept = default;

    bool holds(tree::Node const* child) const noexcept {
        return child->is(tree::NodeKind::element) && child->name->expanded == element;
    }

    /// The attribute of a member, or null.
    tree::Node const* attributeOf(tree::Node const* member) const noexcept;
};

/// The members of a run by the value of the attribute. It points into the tree and is good until
/// the document changes.
class AttributeIndex {
public:
    explicit AttributeIndex(SiblingRun const& run);

    /// Gives the members with this value in document order, without the first `skipped` of them.
    /// True when the visitor stopped.
    bool visit(std::string_view value, std::size_t skipped, NodeVisitor visitor) const;

private:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    struct Entry {
        tree::Node* member;
        tree::Node const* attribute;
        std::size_t hash;
        std::uint32_t next; // of those that share a bucket, in document order
    };

    void collect(SiblingRun const& run);
    void link();

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> buckets_; // a power of two
};

struct SiblingRunHash {
    std::size_t operator()(SiblingRun const& run) const noexcept;
};

/// The indexes of one document, and the notes of long walks.
class AttributeIndexes final : public tree::QueryMemory {
public:
    /// A walk that comes this far makes an index worth while.
    static constexpr std::size_t longRun = 128;

    /// So many runs are remembered; one more, and all are forgotten. All indexes together hold each
    /// attribute of the document at most once, so this only bounds what empty ones take.
    static constexpr std::size_t mostRuns = 16384;

    /// The index of a run if there is one, else null.
    static std::shared_ptr<AttributeIndex const> find(tree::Document& document,
                                                      SiblingRun const& run);

    /// Called by a walk that has come so far: the first time returns null, the second time an
    /// index.
    static std::shared_ptr<AttributeIndex const> noteLongWalk(tree::Document& document,
                                                              SiblingRun const& run);

private:
    static AttributeIndexes* of(tree::Document& document);

    // By the runs that were walked far; null where that happened once.
    std::unordered_map<SiblingRun, std::shared_ptr<AttributeIndex const>, SiblingRunHash> runs_;
    std::uint64_t version_ = 0;
};

/// Gives the members of a run whose attribute has this value, in document order, from an index if
/// that pays. True when the visitor stopped.
bool visitByAttribute(tree::Document& document, SiblingRun const& run, std::string_view value,
                      NodeVisitor visitor);

} // namespace tibxml::query
