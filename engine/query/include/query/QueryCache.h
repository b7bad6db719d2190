// Compiled expressions, kept per thread, so that an expression which is used again is not compiled
// again.
//
// Callers give paths as texts, the same few again and again, and compiling one costs more than a
// short search. One cache per thread needs no lock, and a query remembers what its names mean in
// the last document, which threads could not share anyway.
//
// An entry is found by a hash of the wide text and of the namespace declarations, because the same
// text means something else under others. Entries stand in one array and refer to each other by
// index: each is in the chain of its bucket and in a ring by the order of use, through entry 0.
// When the cache is full the one that was not used for the longest time makes room. A standard map
// with a list beside it would allocate twice per entry and build a key for each look-up; here a hit
// allocates nothing.
//
// Invariants: each entry but 0 is in exactly one bucket chain and once in the ring; what can fail
// in adding one (compiling, copying the texts, growing the array) happens before a chain changes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <query/Query.h>

namespace tibxml::query {

/// Keeps the most recently used queries. A hit costs one hash and one comparison of the text and
/// allocates nothing. Not locked: use forThisThread().
class QueryCache {
public:
    static constexpr std::size_t defaultCapacity = 256;

    /// Longer expressions are compiled each time, so that the memory of the cache stays bounded.
    static constexpr std::size_t longestKept = 4096;

    /// The cache of the calling thread; it lives until the thread ends.
    static QueryCache& forThisThread();

    /// The capacity is at least 1.
    explicit QueryCache(std::size_t capacity = defaultCapacity);
    QueryCache(QueryCache const&) = delete;
    QueryCache& operator=(QueryCache const&) = delete;
    ~QueryCache();

    /// The compiled form of an expression under these namespaces. The reference is valid until the
    /// next call; copy the pointer to keep the query longer. Throws as compile does; a failure is
    /// not remembered and leaves the cache as it was.
    std::shared_ptr<Query const> const& get(std::wstring_view expression,
                                            Namespaces const& namespaces);

    /// How many queries are kept now: never more than the capacity.
    std::size_t size() const noexcept { return size_; }

    /// How often get() had to compile.
    std::size_t misses() const noexcept { return misses_; }

private:
    static constexpr std::uint32_t none = 0xFFFFFFFF;

    // One kept query: chained in its bucket, and in the order of use. Entry 0 is the head of that
    // order and holds no query.
    struct Entry {
        std::shared_ptr<Query const> query;
        std::wstring expression;
        std::wstring namespaces;
        std::size_t hash = 0;
        std::uint32_t nextInBucket = none;
        std::uint32_t newer = 0;
        std::uint32_t older = 0;
    };

    std::uint32_t find(std::size_t hash, std::wstring_view expression,
                       Namespaces const& namespaces) const noexcept;
    std::shared_ptr<Query const> const& keep(std::size_t hash, std::wstring_view expression,
                                             Namespaces const& namespaces,
                                             std::shared_ptr<Query const> query);
    std::uint32_t takeEntry();
    void leaveBucket(std::uint32_t entry) noexcept;
    void leaveOrder(std::uint32_t entry) noexcept;
    void becomeNewest(std::uint32_t entry) noexcept;

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> buckets_; // a power of two
    std::shared_ptr<Query const> unkept_;
    std::size_t capacity_;
    std::size_t size_ = 0;
    std::size_t misses_ = 0;
};

} // namespace tibxml::query
