#include "AttributeIndex.h"

#include <bit>
#include <cstddef>
#include <cstdint>

#include "TextHash.h"

namespace tibxml::query {

namespace {

// Asks for memory before a walk over a long run of siblings and their attributes comes to it.
// Nodes that were read one after the other lie evenly in memory, so the distance to the next
// sibling shows where later ones will be. Worth about a quarter of the time where each attribute is
// looked at; walks that look at the siblings alone gain nothing measurable and do without.
class FetchAhead {
public:
    // To be called for each node on the way. The first ones are not worth guessing from.
    void pass(tree::Node const* node) noexcept {
        if (++passed_ < shortRun) return;
        __builtin_prefetch(guess(node, 0));
        __builtin_prefetch(guess(node, sizeof(tree::Node))); // the first attribute
    }

private:
    static constexpr std::size_t shortRun = 16;
    static constexpr std::uintptr_t distance = 12;

    // Not a pointer to anything; only its address is used.
    static void const* guess(tree::Node const* node, std::uintptr_t offset) noexcept {
        auto const here = reinterpret_cast<std::uintptr_t>(node);
        auto const next = reinterpret_cast<std::uintptr_t>(node->next);
        std::uintptr_t const there = here + distance * (next - here) + offset;
        return reinterpret_cast<void const*>(there); // NOLINT(performance-no-int-to-ptr)
    }

    std::size_t passed_ = 0;
};

} // namespace

tree::Node const* SiblingRun::attributeOf(tree::Node const* member) const noexcept {
    tree::Node const* const found = attributeNamed(member, attribute);
    return found != nullptr && !found->name->declaresNamespace ? found : nullptr;
}

AttributeIndex::AttributeIndex(SiblingRun const& run) {
    collect(run);
    link();
}

void AttributeIndex::collect(SiblingRun const& run) {
    FetchAhead ahead;
    for (tree::Node* node = run.parent->firstChild(); node != nullptr; node = node->next) {
        ahead.pass(node);
        if (!run.holds(node)) continue;
        if (tree::Node const* attribute = run.attributeOf(node))
            entries_.push_back({node, attribute, hashText(attribute->text()), none});
    }
}

// From the last to the first, so that each bucket ends up in document order.
void AttributeIndex::link() {
    buckets_.assign(std::bit_ceil(entries_.size() + 1), none);
    for (std::size_t i = entries_.size(); i-- > 0;) {
        std::uint32_t& bucket = buckets_[entries_[i].hash & (buckets_.size() - 1)];
        entries_[i].next = bucket;
        bucket = static_cast<std::uint32_t>(i);
    }
}

bool AttributeIndex::visit(std::string_view value, std::size_t skipped, NodeVisitor visitor) const {
    std::size_t const hash = hashText(value);
    std::uint32_t at = buckets_[hash & (buckets_.size() - 1)];
    for (; at != none; at = entries_[at].next) {
        Entry const& entry = entries_[at];
        if (entry.hash != hash || entry.attribute->text() != value) continue;
        if (skipped != 0) {
            --skipped;
        } else if (visitor(entry.member)) {
            return true;
        }
    }
    return false;
}

std::size_t SiblingRunHash::operator()(SiblingRun const& run) const noexcept {
    std::uint64_t hash = mixHash(0, reinterpret_cast<std::uintptr_t>(run.parent));
    hash = mixHash(hash, reinterpret_cast<std::uintptr_t>(run.element));
    return mixHash(hash, reinterpret_cast<std::uintptr_t>(run.attribute));
}

// The document's indexes that are still right, null when it has none yet.
AttributeIndexes* AttributeIndexes::of(tree::Document& document) {
    auto* const all = static_cast<AttributeIndexes*>(slotOf(document).get());
    if (all != nullptr && all->version_ != document.version()) {
        all->runs_.clear();
        all->version_ = document.version();
    }
    return all;
}

std::shared_ptr<AttributeIndex const> AttributeIndexes::find(tree::Document& document,
                                                             SiblingRun const& run) {
    AttributeIndexes const* const all = of(document);
    if (all == nullptr) return nullptr;
    auto const found = all->runs_.find(run);
    return found == all->runs_.end() ? nullptr : found->second;
}

std::shared_ptr<AttributeIndex const> AttributeIndexes::noteLongWalk(tree::Document& document,
                                                                     SiblingRun const& run) {
    if (slotOf(document) == nullptr) slotOf(document) = std::make_unique<AttributeIndexes>();
    auto& runs = of(document)->runs_;
    auto const found = runs.find(run);
    if (found != runs.end()) return found->second = std::make_shared<AttributeIndex const>(run);
    if (runs.size() == mostRuns) runs.clear();
    runs.emplace(run, nullptr);
    return nullptr;
}

bool visitByAttribute(tree::Document& document, SiblingRun const& run, std::string_view value,
                      NodeVisitor visitor) {
    if (auto const index = AttributeIndexes::find(document, run))
        return index->visit(value, 0, visitor);
    FetchAhead ahead;
    std::size_t passed = 0;
    std::size_t given = 0;
    for (tree::Node* node = run.parent->firstChild(); node != nullptr; node = node->next) {
        ahead.pass(node);
        if (!run.holds(node)) continue;
        if (++passed == AttributeIndexes::longRun) {
            if (auto const index = AttributeIndexes::noteLongWalk(document, run))
                return index->visit(value, given, visitor);
        }
        tree::Node const* const attribute = run.attributeOf(node);
        if (attribute == nullptr || attribute->text() != value) continue;
        ++given;
        if (visitor(node)) return true;
    }
    return false;
}

} // namespace tibxml::query
