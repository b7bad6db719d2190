#pragma once

#include <gtest/gtest.h>

#include <cstddef>

/// For as long as one lives, the allocations of its thread fail once a number of them succeeded:
/// those of the program's own code, not what shared libraries take for themselves.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t succeeding) noexcept;
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    ~FailingAllocation();

    /// Whether an allocation was made to fail.
    bool happened() const noexcept;
};

/// Runs an operation again and again, with its first allocation failing, then its second, and so on
/// until it gets through. The operation must not use the test framework; it returns whether its
/// outcome was right, given whether it could have failed. Leaks are the sanitizer's to find.
/// Expects at least `least` allocations, lest the operation be one that cannot fail.
template <class Operation>
void failEveryAllocation(std::size_t least, Operation operation) {
    for (std::size_t succeeding = 0;; ++succeeding) {
        bool failed = false;
        bool right = false;
        {
            FailingAllocation const failing{succeeding};
            right = operation(failing);
            failed = failing.happened();
        }
        EXPECT_TRUE(right) << "with " << succeeding << " allocations";
        if (failed) continue;
        EXPECT_GE(succeeding, least);
        return;
    }
}
