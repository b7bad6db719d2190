#include <query/QueryCache.h>

#include <thread>

#include <gtest/gtest.h>

#include "Tree.h"

namespace tibxml::query::test {

namespace {

std::wstring numbered(int i) {
    return L"item[@id='" + std::to_wstring(i) + L"']";
}

} // namespace

TEST(QueryCache, compilesOnce) {
    QueryCache cache;
    Query const* const first = cache.get(L"a/b", {}).get();
    EXPECT_EQ(cache.get(L"a/b", {}).get(), first);
    EXPECT_EQ(cache.misses(), 1U);
    EXPECT_EQ(cache.size(), 1U);
}

TEST(QueryCache, tellsExpressionsApart) {
    QueryCache cache;
    Query const* const a = cache.get(L"a", {}).get();
    Query const* const b = cache.get(L"b", {}).get();
    EXPECT_NE(a, b);
    EXPECT_NE(cache.get(L"a ", {}).get(), a);
    EXPECT_EQ(cache.size(), 3U);
}

TEST(QueryCache, tellsNamespacesApart) {
    QueryCache cache;
    Namespaces const one = Namespaces::parse(L"xmlns:p='urn:1'");
    Namespaces const two = Namespaces::parse(L"xmlns:p='urn:2'");
    std::shared_ptr<Query const> const first = cache.get(L"p:a", one);
    std::shared_ptr<Query const> const second = cache.get(L"p:a", two);
    EXPECT_NE(first, second);
    EXPECT_EQ(cache.get(L"p:a", one), first);
    EXPECT_EQ(cache.get(L"p:a", Namespaces::parse(L"xmlns:p='urn:2'")), second);
    EXPECT_THROW(cache.get(L"p:a", {}), QueryError);
}

TEST(QueryCache, isBounded) {
    QueryCache cache{8};
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 100; ++i)
            cache.get(numbered(i), {});
    }
    EXPECT_EQ(cache.size(), 8U);
    EXPECT_EQ(cache.misses(), 300U);
}

TEST(QueryCache, keepsWhatWasUsedLast) {
    QueryCache cache{3};
    cache.get(L"a", {});
    cache.get(L"b", {});
    cache.get(L"c", {});
    cache.get(L"a", {});
    cache.get(L"d", {}); // b goes
    std::size_t const misses = cache.misses();
    cache.get(L"a", {});
    cache.get(L"c", {});
    cache.get(L"d", {});
    EXPECT_EQ(cache.misses(), misses);
    cache.get(L"b", {});
    EXPECT_EQ(cache.misses(), misses + 1);
}

TEST(QueryCache, aCapacityOfOneWorks) {
    QueryCache cache{1};
    cache.get(L"a", {});
    cache.get(L"b", {});
    cache.get(L"b", {});
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_EQ(cache.misses(), 2U);
}

TEST(QueryCache, queriesOutliveTheirEntries) {
    Tree const tree{"<r><a/></r>"};
    QueryCache cache{1};
    std::shared_ptr<Query const> const kept = cache.get(L"/r/a", {});
    cache.get(L"b", {});
    EXPECT_NE(selectFirst(*kept, tree.document(), tree.node()), nullptr);
}

TEST(QueryCache, failuresLeaveItAsItWas) {
    QueryCache cache{2};
    Query const* const a = cache.get(L"a", {}).get();
    for (int i = 0; i < 10; ++i)
        EXPECT_THROW(cache.get(L"a[", {}), QueryError);
    EXPECT_EQ(cache.size(), 1U);
    EXPECT_EQ(cache.get(L"a", {}).get(), a);
}

TEST(QueryCache, longExpressionsAreNotKept) {
    QueryCache cache;
    std::wstring const name(QueryCache::longestKept + 1, L'a');
    Tree const tree{"<r/>"};
    EXPECT_EQ(selectFirst(*cache.get(name, {}), tree.document(), tree.node()), nullptr);
    EXPECT_EQ(cache.size(), 0U);
    cache.get(name, {});
    EXPECT_EQ(cache.misses(), 2U);
}

TEST(QueryCache, eachThreadHasItsOwn) {
    QueryCache* const mine = &QueryCache::forThisThread();
    QueryCache* other = nullptr;
    std::thread{[&other] {
        other = &QueryCache::forThisThread();
        other->get(L"a", {});
    }}.join();
    EXPECT_EQ(&QueryCache::forThisThread(), mine);
    EXPECT_NE(other, mine);
}

TEST(QueryCache, aNewDocumentAtTheSameAddressIsAnotherDocument) {
    QueryCache cache;
    for (int i = 0; i < 50; ++i) {
        std::string const name{i % 2 == 0 ? "a" : "b"};
        Tree const tree{"<r><" + name + " id='1'/></r>"};
        auto* const found =
            selectFirst(*cache.get(L"/r/a[@id='1']", {}), tree.document(), tree.node());
        EXPECT_EQ(found != nullptr, i % 2 == 0);
    }
    EXPECT_EQ(cache.misses(), 1U);
}

} // namespace tibxml::query::test
