#include "Growth.h"

#include <algorithm>
#include <cstdio>

#include "../Documents.h"
#include "../ProcessorTime.h"
#include "../Settings.h"
#include "Load.h"

namespace bench {

namespace {

double bestSecondsToLoad(std::string const& text) {
    double best = 1e9;
    for (int round = 0; round < 3; ++round) {
        returnFreeMemory();
        double const start = processorSeconds();
        WXmlDoc const document = tibxmlDocument(text);
        best = std::min(best, processorSeconds() - start);
    }
    return best;
}

} // namespace

void printGrowth() {
    std::printf("\n%-50s %11s %11s\n", "loading from memory, by size", "time", "per MB");
    for (std::size_t const factor : {1U, 4U, 10U, 20U, 40U}) {
        std::string const text = settings(manyItems * factor);
        double const megabytes = static_cast<double>(text.size()) / 1e6;
        double const seconds = bestSecondsToLoad(text);
        std::printf("%40.1f MB %16.1f ms %8.2f ms\n", megabytes, seconds * 1e3,
                    seconds * 1e3 / megabytes);
    }
}

} // namespace bench
