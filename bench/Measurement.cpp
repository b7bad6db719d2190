#include "Measurement.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "ProcessorTime.h"

namespace bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double shortestBatch = 2e-3; // seconds; far above the clock's grain
constexpr double timePerContender = 1.0;
constexpr int fewestRounds = 7;
constexpr int mostRounds = 100;

double secondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

double timeBatch(Contender& contender, int runs) {
    double const start = processorSeconds();
    for (int i = 0; i < runs; ++i)
        contender.run();
    return processorSeconds() - start;
}

int runsPerBatch(Contender& contender) {
    if (contender.needsRestoring()) return 1;
    int runs = 1;
    while (timeBatch(contender, runs) < shortestBatch)
        runs *= 2;
    return runs;
}

void compareAnswers(Operation& operation) {
    std::array<std::uint64_t, libraryCount> answers{};
    for (std::size_t i = 0; i < libraryCount; ++i) {
        if (!operation.contenders[i]) continue;
        operation.contenders[i]->restore();
        operation.contenders[i]->run();
        answers[i] = operation.contenders[i]->answer();
        if (answers[i] != answers[0]) {
            throw std::runtime_error{operation.name + ": " + libraryNames[i] +
                                     " gives another answer than " + libraryNames[0]};
        }
    }
}

double timeOnce(Contender& contender, int runs) {
    contender.restore();
    return contender.weight() * timeBatch(contender, runs) / runs;
}

} // namespace

Row measure(Operation& operation) {
    compareAnswers(operation);
    Row row{operation.name, Unit::seconds, {}, operation.targets};
    std::array<int, libraryCount> runs{};
    for (std::size_t i = 0; i < libraryCount; ++i) {
        if (!operation.contenders[i]) continue;
        row.values[i] = std::numeric_limits<double>::max();
        runs[i] = runsPerBatch(*operation.contenders[i]);
    }
    auto const start = Clock::now();
    for (int round = 0; round < mostRounds; ++round) {
        if (round >= fewestRounds && secondsSince(start) > timePerContender * libraryCount) break;
        for (std::size_t i = 0; i < libraryCount; ++i) {
            if (!operation.contenders[i]) continue;
            row.values[i] = std::min(row.values[i], timeOnce(*operation.contenders[i], runs[i]));
        }
    }
    for (double& value : row.values)
        value /= operation.parts;
    return row;
}

} // namespace bench
