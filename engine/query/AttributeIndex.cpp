#include "AttributeIndex.h"

#include <bit>

#include "AttributeLookup.h"
#include "TextHash.h"

namespace tibxml::query {

namespace {

// Nodes that were read one after the other lie evenly in memory, so the distance to the next
// sibling tells where later ones will be. The processor does not find that out itself, because so
// many other nodes lie between them. A wrong guess costs nothing but the attempt.
void fetchAhead(tree::Node const* node) noexcept {
    constexpr std::uintptr_t ahead = 12;
    auto const here = reinterpret_cast<std::uintptr_t>(node);
    std::uintptr_t const there =
        here + ahead * (reinterpret_cast<std::uintptr_t>(node->next) - here);
    __builtin_prefetch(reinterpret_cast<void const*>(there)); // NOLINT(performance-no-int-to-ptr)
    __builtin_prefetch(reinterpret_cast<void const*>(         // NOLINT(performance-no-int-to-ptr)
        there + sizeof(tree::Node)));                         // the first attribute
}

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
    for (tree::Node* node = run.parent->firstChild(); node != nullptr; node = node->next) {
        fetchAhead(node);
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

AttributeIndexes::Slot& AttributeIndexes::slotFor(tree::Document const& document,
                                                  SiblingRun const& run) {
    if (version_ != document.version()) {
        slots_ = {};
        version_ = document.version();
    }
    std::uint64_t hash = mixHash(0, reinterpret_cast<std::uintptr_t>(run.parent));
    hash = mixHash(hash, reinterpret_cast<std::uintptr_t>(run.element));
    hash = mixHash(hash, reinterpret_cast<std::uintptr_t>(run.attribute));
    return slots_[hash % slots_.size()];
}

std::shared_ptr<AttributeIndex const> AttributeIndexes::find(tree::Document& document,
                                                             SiblingRun const& run) {
    if (document.queryIndex == nullptr) return nullptr;
    auto& all = *static_cast<AttributeIndexes*>(document.queryIndex.get());
    Slot const& slot = all.slotFor(document, run);
    return slot.run == run ? slot.index : nullptr;
}

std::shared_ptr<AttributeIndex const> AttributeIndexes::noteLongWalk(tree::Document& document,
                                                                     SiblingRun const& run) {
    if (document.queryIndex == nullptr) document.queryIndex = std::make_shared<AttributeIndexes>();
    auto& all = *static_cast<AttributeIndexes*>(document.queryIndex.get());
    Slot& slot = all.slotFor(document, run);
    if (slot.run == run) {
        slot.index = std::make_shared<AttributeIndex const>(run);
    } else {
        slot = {run, nullptr};
    }
    return slot.index;
}

bool visitByAttribute(tree::Document& document, SiblingRun const& run, std::string_view value,
                      NodeVisitor visitor) {
    constexpr std::size_t shortRun = 16; // whose nodes are not worth guessing
    if (auto const index = AttributeIndexes::find(document, run))
        return index->visit(value, 0, visitor);
    std::size_t passed = 0;
    std::size_t given = 0;
    for (tree::Node* node = run.parent->firstChild(); node != nullptr; node = node->next) {
        if (!run.holds(node)) continue;
        if (++passed >= shortRun) fetchAhead(node);
        if (passed == AttributeIndexes::longRun) {
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
