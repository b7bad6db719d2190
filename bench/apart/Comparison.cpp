#include "Comparison.h"

#include <algorithm>

#include "../Corpus.h"
#include "../count/Count.h"
#include "../sax/Sax.h"
#include "../validate/Validate.h"

namespace bench {

namespace {

constexpr char const* shortDocument = "2 KB";

struct LoadGoals {
    double pugixml = 0;
    double libxml2 = 0;
};

Contestant loadingBy(char const* library, ContenderPtr (*make)(Sources const&, From, Drop),
                     From from, double atMost = 0) {
    return {library,
            [make, from](Sources const& sources) { return make(sources, from, Drop::timed); },
            atMost};
}

Contestant loadingByLibxml2(From from, Layout layout, double atMost) {
    return {"libxml2",
            [from, layout](Sources const& sources) {
                return libxml2Load(sources, from, Drop::timed, layout);
            },
            atMost};
}

Comparison loading(std::string const& name, std::string const& document, From from, Way way,
                   LoadGoals goals) {
    return {name + ", " + document,
            document,
            from,
            way,
            {loadingBy("TibXml", tibxmlLoad, from),
             loadingBy("pugixml", pugixmlLoad, from, goals.pugixml),
             loadingByLibxml2(from, Layout::asByDefault, goals.libxml2)}};
}

// libxml2 reads no wide text.
Comparison loadingWide(std::string const& document) {
    From const from = From::wideText;
    return {"load from wide text, " + document,
            document,
            from,
            Way::warm,
            {loadingBy("TibXml", tibxmlLoad, from), loadingBy("pugixml", pugixmlLoad, from, 1)}};
}

void addLoads(std::vector<Comparison>& all, std::string const& document) {
    bool const isShort = document == shortDocument;
    LoadGoals const goals = isShort ? LoadGoals{1, 0} : LoadGoals{0.9, 0.2};
    all.push_back(loading("load from memory, warm", document, From::memory, Way::warm, goals));
    all.push_back(loading("load from memory, cold", document, From::memory, Way::cold, goals));
    all.push_back(loadingWide(document));
    all.push_back(loading("load a file, process and all", document, From::file, Way::coldProcess,
                          {isShort ? 0 : 0.9, 0}));
}

// The text shows whether there is a byte for each character.
template <ContenderPtr (*make)(std::string const&, Letters)>
Contestant streamingBy(char const* library, double atMost = 0) {
    return {library,
            [](Sources const& sources) { return make(sources.path, lettersOf(sources.text)); },
            atMost};
}

Comparison streaming(std::string const& document) {
    return {"all events, wide text, " + document,
            document,
            From::file,
            Way::warm,
            {streamingBy<tibxmlSax>("TibXml"), streamingBy<libxml2Sax>("libxml2", 0.8),
             streamingBy<expatSax>("Expat", 0.4)}};
}

template <ContenderPtr (*make)(std::string const&)>
Contestant countingBy(char const* library, double atMost = 0) {
    return {library, [](Sources const& sources) { return make(sources.path); }, atMost};
}

Comparison counting(std::string const& document) {
    return {"count what is in a file, " + document,
            document,
            From::file,
            Way::warm,
            {countingBy<tibxmlCount>("TibXml"), countingBy<libxml2Count>("libxml2", 0.4)}};
}

Comparison validating(std::string const& name, Layout layout) {
    What const what = What::parseAndValidate;
    auto const ours = [](Sources const& sources) { return tibxmlValidate(sources, what); };
    auto const theirs = [layout](Sources const& sources) {
        return libxml2Validate(sources, what, layout);
    };
    return {
        name, "settings", From::memory, Way::warm, {{"TibXml", ours}, {"libxml2", theirs, 0.4}}};
}

// Layout is dropped by all, or it would be libxml2's white space that is measured.
Comparison remembering(std::string const& document) {
    From const from = From::memory;
    return {"memory for each node, " + document,
            document,
            from,
            Way::memory,
            {loadingBy("TibXml", tibxmlLoad, from), loadingBy("pugixml", pugixmlLoad, from),
             loadingByLibxml2(from, Layout::dropped, 0)}};
}

std::vector<Comparison> makeComparisons() {
    std::vector<Comparison> all;
    for (CorpusDocument const& document : corpus())
        addLoads(all, document.name);
    for (CorpusDocument const& document : corpus()) {
        if (std::string{document.name} == shortDocument) continue;
        all.push_back(streaming(document.name));
        all.push_back(counting(document.name));
        all.push_back(remembering(document.name));
    }
    all.push_back(validating("load and validate, settings", Layout::asByDefault));
    all.push_back(validating("load and validate, libxml2 drops layout", Layout::dropped));
    std::stable_sort(all.begin(), all.end(),
                     [](Comparison const& a, Comparison const& b) { return a.way < b.way; });
    return all;
}

} // namespace

std::vector<Comparison> const& comparisons() {
    static std::vector<Comparison> const all = makeComparisons();
    return all;
}

} // namespace bench
