// One library doing one operation.
#pragma once

#include <cstdint>
#include <memory>

namespace bench {

class Contender {
public:
    Contender() = default;
    Contender(Contender const&) = delete;
    Contender& operator=(Contender const&) = delete;
    virtual ~Contender() = default;

    // The operation, once. This alone is timed.
    virtual void run() = 0;

    // Whether restore() must come between two runs; then runs are timed one by one.
    virtual bool needsRestoring() const { return false; }

    // Makes run() find again what it found first.
    virtual void restore() {}

    // How many times a run counts: more than once for who does only a part of a long operation.
    virtual double weight() const { return 1; }

    // What the last run computed, as a number that is equal for all who did the same. Throws when
    // the run failed.
    virtual std::uint64_t answer() = 0;
};

using ContenderPtr = std::unique_ptr<Contender>;

} // namespace bench
