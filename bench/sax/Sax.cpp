#include "Sax.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <stdexcept>

#include "../ProcessorTime.h"
#include "../TemporaryFile.h"

namespace bench {

namespace {

constexpr int rounds = 40;
constexpr double wantedOfLibxml2 = 0.6;

struct Entry {
    char const* name;
    ContenderPtr contender;
    double seconds = 1e9;
};

double secondsOfOneRun(Contender& contender) {
    double const start = processorSeconds();
    contender.run();
    return processorSeconds() - start;
}

void requireSameAnswers(std::array<Entry, 3>& entries) {
    for (Entry& entry : entries) {
        entry.contender->run();
        if (entry.contender->answer() != entries[0].contender->answer())
            throw std::runtime_error{std::string{entry.name} + " counts otherwise"};
    }
}

// Everything but ASCII becomes a letter, so that bytes and characters are as many.
std::string inAscii(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; }, 'x');
    return text;
}

} // namespace

Letters lettersOf(std::string const& text) noexcept {
    bool const isAscii =
        std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
    return isAscii ? Letters::ascii : Letters::any;
}

void printSax(std::string const& text) {
    TemporaryFile const file{inAscii(text)};
    std::array<Entry, 3> entries{Entry{"TibXml", tibxmlSax(file.path(), Letters::ascii)},
                                 Entry{"libxml2", libxml2Sax(file.path(), Letters::ascii)},
                                 Entry{"Expat", expatSax(file.path(), Letters::ascii)}};
    requireSameAnswers(entries);
    for (int round = 0; round != rounds; ++round) {
        for (Entry& entry : entries)
            entry.seconds = std::min(entry.seconds, secondsOfOneRun(*entry.contender));
    }
    std::printf("\ncounting by events in a file of 5 MB\n");
    for (Entry const& entry : entries) {
        std::printf("%40s %11.2f ms %6.0f MB/s %8.2f of libxml2\n", entry.name, entry.seconds * 1e3,
                    static_cast<double>(text.size()) / entry.seconds / 1e6,
                    entries[1].seconds / entry.seconds);
    }
    bool const isReached = entries[1].seconds >= wantedOfLibxml2 * entries[0].seconds &&
                           entries[0].seconds < entries[2].seconds;
    std::printf("at least %.1f of libxml2, faster than Expat: %s\n", wantedOfLibxml2,
                isReached ? "reached" : "MISSED");
}

} // namespace bench
