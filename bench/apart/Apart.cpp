#include "Apart.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "../Corpus.h"
#include "../Table.h"
#include "../TemporaryFile.h"
#include "Alone.h"
#include "Comparison.h"
#include "Process.h"

namespace bench {

namespace {

constexpr int samplesPerProcess = 5;

// The documents as files, each made when the first wants it.
class Files {
public:
    std::string const& pathOf(std::string const& name) {
        std::unique_ptr<TemporaryFile>& file = files_[name];
        if (!file) file = std::make_unique<TemporaryFile>(make(name));
        return file->path();
    }

private:
    static std::string make(std::string const& name) {
        for (CorpusDocument const& document : corpus())
            if (document.name == name) return document.make();
        throw std::runtime_error{"no document is called " + name};
    }

    std::map<std::string, std::unique_ptr<TemporaryFile>> files_;
};

class Samples {
public:
    void add(std::string const& lines) {
        std::istringstream stream{lines};
        for (double value = 0; stream >> value;)
            values_.push_back(value);
    }

    double median() {
        if (values_.empty()) throw std::runtime_error{"a measurement gives no samples"};
        auto const middle = values_.begin() + static_cast<std::ptrdiff_t>(values_.size() / 2);
        std::nth_element(values_.begin(), middle, values_.end());
        return *middle;
    }

private:
    std::vector<double> values_;
};

std::string outputOf(Task const& task) {
    return outputOfThisProgram(argumentsOf(task));
}

void compareAnswers(Comparison const& comparison, Task task) {
    std::string ours;
    for (; task.contestant != comparison.contestants.size(); ++task.contestant) {
        std::string const answer = outputOf(task);
        if (task.contestant == 0) ours = answer;
        if (answer != ours) {
            throw std::runtime_error{comparison.name + ": " +
                                     comparison.contestants[task.contestant].library +
                                     " gives another answer than TibXml"};
        }
    }
}

std::vector<double> medians(Comparison const& comparison, Task task, int rounds) {
    std::vector<Samples> samples(comparison.contestants.size());
    for (int round = 0; round != rounds; ++round) {
        for (task.contestant = 0; task.contestant != samples.size(); ++task.contestant)
            samples[task.contestant].add(outputOf(task));
    }
    std::vector<double> values;
    values.reserve(samples.size());
    for (Samples& one : samples)
        values.push_back(one.median());
    return values;
}

constexpr char const* lineFormat = "%-48s %11s  %-8s %11s %12s %8s  %s\n";

void printLine(Comparison const& comparison, Contestant const& peer, double ours, double theirs) {
    Unit const unit = comparison.way == Way::memory ? Unit::bytes : Unit::seconds;
    double const ratio = ours / theirs;
    bool const isAsked = peer.atMost > 0;
    std::printf(lineFormat, comparison.name.c_str(), inUnit(ours, unit).c_str(), peer.library,
                inUnit(theirs, unit).c_str(), formatted("%.2f", ratio).c_str(),
                isAsked ? formatted("%.2f", peer.atMost).c_str() : "-",
                !isAsked               ? ""
                : ratio <= peer.atMost ? "reached"
                                       : "MISSED");
}

void measureAndPrint(std::size_t place, std::string const& path, int rounds) {
    Comparison const& comparison = comparisons()[place];
    compareAnswers(comparison, {place, 0, path, 0});
    int const samples = comparison.way == Way::memory ? 1 : samplesPerProcess;
    std::vector<double> const values = medians(comparison, {place, 0, path, samples}, rounds);
    for (std::size_t i = 1; i != values.size(); ++i)
        printLine(comparison, comparison.contestants[i], values[0], values[i]);
    (void)std::fflush(stdout);
}

} // namespace

void printApart(std::string_view partOfName, int rounds) {
    std::printf("\neach library in a process of its own; medians of %d processes with %d samples\n",
                rounds, samplesPerProcess);
    std::printf(lineFormat, "operation, document", "TibXml", "peer", "", "TibXml/peer", "at most",
                "");
    Files files;
    for (std::size_t i = 0; i != comparisons().size(); ++i) {
        Comparison const& comparison = comparisons()[i];
        if (comparison.name.find(partOfName) == std::string::npos) continue;
        measureAndPrint(i, files.pathOf(comparison.document), rounds);
    }
}

} // namespace bench
