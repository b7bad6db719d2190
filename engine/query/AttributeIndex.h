// `item[@id='7']` over long runs of siblings, answered without walking them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <tree/Document.h>

#include "NodeVisitor.h"

namespace tibxml::query {

// The children of one parent that have one name, told apart by one attribute.
struct SiblingRun {
    tree::Node const* parent = nullptr;
    tree::Name const* element = nullptr; // records that stand for expanded names
    tree::Name const* attribute = nullptr;

    bool operator==(SiblingRun const&) const noexcept = default;

    bool holds(tree::Node const* child) const noexcept {
        return child->is(tree::NodeKind::element) && child->name->expanded == element;
    }

    // The attribute of a member, or null.
    tree::Node const* attributeOf(tree::Node const* member) const noexcept;
};

// The members of a run by the value of the attribute. It points into the tree and is good until the
// document changes.
class AttributeIndex {
public:
    explicit AttributeIndex(SiblingRun const& run);

    // Gives the members with this value in document order, without the first `skipped` of them.
    // True when the visitor stopped.
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

// The indexes of one document. An index costs as much as a walk over the whole run, so one is made
// only when a run is walked far for the second time without a change in between. They all go when
// the document changes.
class AttributeIndexes {
public:
    // A walk that comes this far makes an index worth while.
    static constexpr std::size_t longRun = 128;

    // So many runs are remembered; one more, and all are forgotten. All indexes together hold each
    // attribute of the document at most once, so this only bounds what empty ones take.
    static constexpr std::size_t mostRuns = 16384;

    // The index of a run if there is one, else null.
    static std::shared_ptr<AttributeIndex const> find(tree::Document& document,
                                                      SiblingRun const& run);

    // To be told when a walk has come so far: the first time gives null, the second time an index.
    static std::shared_ptr<AttributeIndex const> noteLongWalk(tree::Document& document,
                                                              SiblingRun const& run);

private:
    static AttributeIndexes* of(tree::Document& document);

    // By the runs that were walked far; null where that happened once.
    std::unordered_map<SiblingRun, std::shared_ptr<AttributeIndex const>, SiblingRunHash> runs_;
    std::uint64_t version_ = 0;
};

// Gives the members of a run whose attribute has this value, in document order, from an index if
// that pays. True when the visitor stopped.
bool visitByAttribute(tree::Document& document, SiblingRun const& run, std::string_view value,
                      NodeVisitor visitor);

} // namespace tibxml::query
