#include "Alone.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <malloc.h>
#include <stdexcept>
#include <sys/mman.h>

#include "../ProcessorTime.h"
#include "../Settings.h"
#include "../memory/Memory.h"
#include "Comparison.h"
#include "Fork.h"

namespace bench {

namespace {

constexpr double shortestBatch = 2e-3; // seconds; far above the clock's grain

std::string contentOf(std::string const& path) {
    std::string content(std::filesystem::file_size(path), '\0');
    std::ifstream file{path, std::ios::binary};
    if (!file.read(content.data(), static_cast<std::streamsize>(content.size())))
        throw std::runtime_error{"cannot read " + path};
    return content;
}

// A number that a fork writes and this process reads.
class SharedNumber {
public:
    SharedNumber()
        : page_{mmap(nullptr, sizeof(double), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                     -1, 0)} {
        if (page_ == MAP_FAILED) throw std::runtime_error{"the system shares no memory"};
    }

    SharedNumber(SharedNumber const&) = delete;
    SharedNumber& operator=(SharedNumber const&) = delete;

    ~SharedNumber() { munmap(page_, sizeof(double)); }

    double& value() const noexcept { return *static_cast<double*>(page_); }

private:
    void* page_;
};

// Otherwise the allocator gives the memory of a large document back to the system when it is freed,
// and the next run begins with cold memory.
void keepFreedMemory() noexcept {
    mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
    mallopt(M_MMAP_MAX, 0);
}

class Alone {
public:
    Alone(Comparison const& comparison, Contestant const& contestant, Sources const& sources)
        : comparison_{comparison},
          contestant_{contestant},
          sources_{sources} {}

    void printAnswer() const {
        ContenderPtr const contender = contestant_.make(sources_);
        contender->run();
        std::printf("%llu\n", static_cast<unsigned long long>(contender->answer()));
    }

    void printSamples(int samples) const {
        returnFreeMemory();
        if (comparison_.way == Way::warm) keepFreedMemory();
        ContenderPtr const contender =
            comparison_.way == Way::warm ? contestant_.make(sources_) : nullptr;
        int const runs = contender ? runsPerSample(*contender) : 1;
        for (int i = 0; i != samples; ++i)
            std::printf("%.9g\n", contender ? warm(*contender, runs) : fresh());
    }

private:
    // The first runs warm up as well.
    static int runsPerSample(Contender& contender) {
        warm(contender, 1);
        int runs = 1;
        while (!contender.needsRestoring() && runs * warm(contender, runs) < shortestBatch)
            runs *= 2;
        return runs;
    }

    static double warm(Contender& contender, int runs) {
        if (contender.needsRestoring()) contender.restore();
        double const start = processorSeconds();
        for (int i = 0; i != runs; ++i)
            contender.run();
        return (processorSeconds() - start) / runs;
    }

    double fresh() const {
        switch (comparison_.way) {
        case Way::cold: return cold();
        case Way::coldProcess: return coldProcess();
        default: return memory();
        }
    }

    // The end of the contender frees what it has loaded.
    double cold() const {
        SharedNumber const seconds;
        inFork([&] {
            ContenderPtr contender = contestant_.make(sources_);
            double const start = processorSeconds();
            contender->run();
            contender.reset();
            seconds.value() = processorSeconds() - start;
        });
        return seconds.value();
    }

    double coldProcess() const {
        auto const start = std::chrono::steady_clock::now();
        inFork([&] { contestant_.make(sources_)->run(); });
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    double memory() const {
        SharedNumber const bytes;
        inFork([&] {
            ContenderPtr const contender = contestant_.make(sources_);
            double const before = anonymousMemory();
            contender->run();
            returnFreeMemory();
            bytes.value() = anonymousMemory() - before;
        });
        return bytes.value() / nodeCount(sources_.text);
    }

    Comparison const& comparison_;
    Contestant const& contestant_;
    Sources const& sources_;
};

} // namespace

std::vector<std::string> argumentsOf(Task const& task) {
    return {aloneOption, std::to_string(task.comparison), std::to_string(task.contestant),
            task.path, std::to_string(task.samples)};
}

Task taskOf(std::vector<std::string> const& arguments) {
    if (arguments.size() != 5) throw std::runtime_error{"a task has four arguments"};
    return {std::stoul(arguments[1]), std::stoul(arguments[2]), arguments[3],
            std::stoi(arguments[4])};
}

// A process that is to be cold holds no copy of the document, which each fork would share.
void doAlone(Task const& task) {
    Comparison const& comparison = comparisons().at(task.comparison);
    std::string const text =
        comparison.way == Way::coldProcess ? std::string{} : contentOf(task.path);
    Sources const sources{text,
                          comparison.from == From::wideText ? widened(text.data(), text.size())
                                                            : std::wstring{},
                          task.path,
                          {task.path.begin(), task.path.end()}};
    Alone const alone{comparison, comparison.contestants.at(task.contestant), sources};
    if (task.samples == 0) {
        alone.printAnswer();
    } else {
        alone.printSamples(task.samples);
    }
}

} // namespace bench
