#include <TibXml/WXPath.h>

#include <gtest/gtest.h>

#include "PathParts.h"

#include <cstdlib>
#include <functional>
#include <new>
#include <utility>

// Every allocation of every operation fails in turn. A program of its own, because it replaces the
// global allocation functions.

namespace {

constexpr int never = -1;

int allocationsUntilFailure = never;
int allocations = 0;
int living = 0;

void* allocate(std::size_t size) {
    if (allocationsUntilFailure == 0) {
        throw std::bad_alloc();
    }
    if (allocationsUntilFailure > 0) {
        --allocationsUntilFailure;
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++allocations;
    ++living;
    return memory;
}

void release(void* memory) noexcept {
    living -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

} // namespace

void* operator new(std::size_t size) {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}

namespace {

template <class Action>
int allocationsOf(Action const& action) {
    int const before = allocations;
    action();
    return allocations - before;
}

// Runs with the allocation after `granted` others failing. True when memory was enough.
template <class Action>
bool succeedsWith(int granted, Action const& action) {
    allocationsUntilFailure = granted;
    bool enough = true;
    try {
        action();
    } catch (std::bad_alloc const&) {
        enough = false;
    }
    allocationsUntilFailure = never;
    return enough;
}

struct Operation {
    char const* name;
    void (*run)(WXPath& path);
    bool changesThePath;
};

Operation const operations[] = {
    {"make from characters", [](WXPath&) { WXPath const path(L"/x/y[1]"); }, false},
    {"copy",
     [](WXPath& path) {
         // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the point
         WXPath const copy(path);
     },
     false},
    {"copy-assign", [](WXPath& path) { WXPath(L"o/p[1]") = path; }, false},
    {"IsEmpty", [](WXPath& path) { static_cast<void>(path.IsEmpty()); }, false},
    {"ToString", [](WXPath& path) { static_cast<void>(path.ToString()); }, false},
    {"GetRoot", [](WXPath& path) { static_cast<void>(path.GetRoot()); }, false},
    {"GetLeaf", [](WXPath& path) { static_cast<void>(path.GetLeaf()); }, false},
    {"GetParentOfLeaf", [](WXPath& path) { static_cast<void>(path.GetParentOfLeaf()); }, false},
    {"GetChildOfRoot", [](WXPath& path) { static_cast<void>(path.GetChildOfRoot()); }, false},
    {"string of a part", [](WXPath& path) { static_cast<void>(path.GetChildOfRoot().ToString()); },
     false},
    {"GetFilterClause",
     [](WXPath& path) {
         CString clause;
         path.GetFilterClause(0, clause);
     },
     false},
    {"AddFilterClause", [](WXPath& path) { path.AddFilterClause(L"../@new='1'"); }, true},
    {"RemoveFilterClause", [](WXPath& path) { path.RemoveFilterClause(L"2"); }, true},
    {"Normalize", [](WXPath& path) { path.Normalize(); }, true},
    {"copy-assign to it",
     [](WXPath& path) {
         WXPath const other(L"another/path[1]");
         static_cast<void>(other.IsEmpty());
         path = other;
     },
     true},
    {"assign", [](WXPath& path) { path = L"a/completely[different]/path"; }, true},
};

using Make = void (*)(WXPath& path);

struct Condition {
    char const* name;
    Make prepare;
};

void moveToItself(WXPath& path) {
    WXPath& same = path;
    path = std::move(same);
}

Condition const conditions[] = {
    {"fresh", [](WXPath&) {}},
    {"taken apart", [](WXPath& path) { static_cast<void>(path.IsEmpty()); }},
    {"without string", [](WXPath& path) { moveToItself(path); }},
    {"taken apart, without string",
     [](WXPath& path) {
         static_cast<void>(path.IsEmpty());
         moveToItself(path);
     }},
    {"moved from", [](WXPath& path) { WXPath const taken(std::move(path)); }},
};

constexpr wchar_t const* sample = L"../a/gr\u00FC\u00DFe[../@x='1'][\"2\"]/b[1][2][./c='3'][../d]";

struct Observed {
    std::wstring string;
    std::wstring prefix;
    Steps steps;

    bool operator==(Observed const&) const = default;
};

Observed observed(WXPath const& path) {
    return {stringOf(path), prefixOf(path), stepsOf(path)};
}

Observed observedAfter(Condition const& condition, void (*run)(WXPath&)) {
    WXPath path(sample);
    condition.prepare(path);
    run(path);
    return observed(path);
}

// One attempt with so many allocations granted. True when they were enough.
bool attempt(Condition const& condition, Operation const& operation, int granted) {
    Observed const before = observedAfter(condition, [](WXPath&) {});
    Observed const after = observedAfter(condition, operation.run);
    EXPECT_TRUE(operation.changesThePath || before == after);
    int const livingBefore = living;
    bool enough = false;
    {
        WXPath path(sample);
        condition.prepare(path);
        enough = succeedsWith(granted, [&] { operation.run(path); });
        EXPECT_EQ(observed(path), enough ? after : before) << granted << " allocations granted";
    }
    EXPECT_EQ(living, livingBefore) << granted << " allocations granted";
    return enough;
}

void expectAllOrNothing(Condition const& condition, Operation const& operation) {
    constexpr int tooMany = 10000;
    int granted = 0;
    while (granted < tooMany && !attempt(condition, operation, granted)) {
        ++granted;
    }
    EXPECT_LT(granted, tooMany);
}

TEST(MemoryExhaustion, EveryOperationIsDoneWhollyOrNotAtAll) {
    for (Condition const& condition : conditions) {
        for (Operation const& operation : operations) {
            SCOPED_TRACE(std::string(condition.name) + ", " + operation.name);
            expectAllOrNothing(condition, operation);
        }
    }
}

TEST(MemoryExhaustion, EscapingIsDoneWhollyOrNotAtAll) {
    for (auto const change : {&WXPath::ReplaceXMLEntities, &WXPath::UnReplaceXMLEntities}) {
        CString const original = L"<a b='1'>&#38;&x;</a> &amp;&lt;";
        CString expected = original;
        change(expected);
        bool enough = false;
        for (int granted = 0; !enough; ++granted) {
            ASSERT_LT(granted, 1000);
            CString text = original;
            enough = succeedsWith(granted, [&] { change(text); });
            EXPECT_EQ(wide(text), wide(enough ? expected : original)) << granted;
        }
    }
}

TEST(MemoryExhaustion, NothingIsLeftBehind) {
    int const before = living;
    {
        WXPath path(sample);
        for (Operation const& operation : operations) {
            operation.run(path);
        }
    }
    EXPECT_EQ(living, before);
}

TEST(MemoryUse, APathMadeOfAStringCostsThatString) {
    CString const text = sample;
    EXPECT_EQ(allocationsOf([&] { WXPath const path(text); }), 0);
    EXPECT_EQ(allocationsOf([] { WXPath const path(sample); }), 1);
    EXPECT_EQ(allocationsOf([] { EXPECT_STREQ(WXPath(sample), sample); }), 1);
    EXPECT_EQ(allocationsOf([] { WXPath const path; }), 0);
}

TEST(MemoryUse, CopiesOfAFreshPathCostNothing) {
    WXPath const path(sample);
    WXPath target;
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the point
    EXPECT_EQ(allocationsOf([&] { WXPath const copy(path); }), 0);
    EXPECT_EQ(allocationsOf([&] { target = path; }), 0);
}

TEST(MemoryUse, MovesNeverNeedMemory) {
    for (Condition const& condition : conditions) {
        WXPath path(sample);
        condition.prepare(path);
        WXPath target(L"x/y[1]");
        EXPECT_EQ(allocationsOf([&] {
                      WXPath taken(std::move(path));
                      target = std::move(taken);
                      moveToItself(target);
                  }),
                  0)
            << condition.name;
    }
}

} // namespace
