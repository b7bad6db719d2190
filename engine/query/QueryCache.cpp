#include <query/QueryCache.h>

#include <utility>

#include "TextHash.h"

namespace tibxml::query {

namespace {

std::size_t bucketCountFor(std::size_t capacity) noexcept {
    std::size_t count = 4;
    while (count < 2 * capacity)
        count *= 2;
    return count;
}

} // namespace

QueryCache& QueryCache::forThisThread() {
    thread_local QueryCache cache;
    return cache;
}

QueryCache::QueryCache(std::size_t capacity)
    : entries_(1),
      buckets_(bucketCountFor(capacity), none),
      capacity_{capacity} {}

QueryCache::~QueryCache() = default;

std::uint32_t QueryCache::find(std::size_t hash, std::wstring_view expression,
                               Namespaces const& namespaces) const noexcept {
    std::uint32_t at = buckets_[hash & (buckets_.size() - 1)];
    for (; at != none; at = entries_[at].nextInBucket) {
        Entry const& entry = entries_[at];
        if (entry.hash == hash && entry.expression == expression &&
            entry.namespaces == namespaces.text())
            break;
    }
    return at;
}

std::shared_ptr<Query const> const& QueryCache::get(std::wstring_view expression,
                                                    Namespaces const& namespaces) {
    std::size_t const hash = hashText(expression) ^ namespaces.hash();
    std::uint32_t const found = find(hash, expression, namespaces);
    if (found != none) {
        if (entries_[0].older != found) {
            leaveOrder(found);
            becomeNewest(found);
        }
        return entries_[found].query;
    }
    ++misses_;
    std::shared_ptr<Query const> query = compile(expression, namespaces);
    if (expression.size() > longestKept || namespaces.text().size() > longestKept)
        return unkept_ = std::move(query);
    return keep(hash, expression, namespaces, std::move(query));
}

// Everything that can fail comes before the tables change.
std::shared_ptr<Query const> const& QueryCache::keep(std::size_t hash, std::wstring_view expression,
                                                     Namespaces const& namespaces,
                                                     std::shared_ptr<Query const> query) {
    std::wstring expressionText{expression};
    std::wstring namespacesText{namespaces.text()};
    std::uint32_t const at = takeEntry();
    Entry& entry = entries_[at];
    entry.query = std::move(query);
    entry.expression = std::move(expressionText);
    entry.namespaces = std::move(namespacesText);
    entry.hash = hash;
    std::uint32_t& bucket = buckets_[hash & (buckets_.size() - 1)];
    entry.nextInBucket = bucket;
    bucket = at;
    becomeNewest(at);
    return entry.query;
}

// A new entry, or the one that was not used for the longest time.
std::uint32_t QueryCache::takeEntry() {
    if (size_ < capacity_) {
        entries_.emplace_back();
        return static_cast<std::uint32_t>(++size_);
    }
    std::uint32_t const oldest = entries_[0].newer;
    leaveOrder(oldest);
    leaveBucket(oldest);
    return oldest;
}

void QueryCache::leaveBucket(std::uint32_t entry) noexcept {
    std::uint32_t* link = &buckets_[entries_[entry].hash & (buckets_.size() - 1)];
    while (*link != entry)
        link = &entries_[*link].nextInBucket;
    *link = entries_[entry].nextInBucket;
}

// The order is a ring through entry 0, whose older neighbour is the newest query.
void QueryCache::leaveOrder(std::uint32_t entry) noexcept {
    Entry const& leaving = entries_[entry];
    entries_[leaving.newer].older = leaving.older;
    entries_[leaving.older].newer = leaving.newer;
}

void QueryCache::becomeNewest(std::uint32_t entry) noexcept {
    std::uint32_t const second = entries_[0].older;
    entries_[entry].newer = 0;
    entries_[entry].older = second;
    entries_[second].newer = entry;
    entries_[0].older = entry;
}

} // namespace tibxml::query
