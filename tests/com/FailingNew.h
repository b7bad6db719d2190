// Makes the C++ allocations of the thread fail. What the parser below takes from the C library by
// itself is left alone.
#pragma once

#include <cstddef>

// While one lives, allocations fail once a number of them succeeded, that one and all after it.
class FailingNew {
public:
    explicit FailingNew(std::size_t succeeding) noexcept;
    FailingNew(FailingNew const&) = delete;
    FailingNew& operator=(FailingNew const&) = delete;
    ~FailingNew();

    // Whether an allocation was made to fail.
    bool happened() const noexcept;
};
