#include "Strings.h"

namespace bench {

std::string contextName(std::size_t context) {
    return "window" + std::to_string(context);
}

std::string keyName(std::size_t key) {
    return "IDS_TEXT_" + std::to_string(key);
}

std::string stringMap(StringSet const& set) {
    std::string text = "<?xml version='1.0'?>\n<stringMap>\n";
    for (std::size_t context = 0; context < set.contexts; ++context) {
        text += "\t<context name=\"" + contextName(context) + "\">\n";
        for (std::size_t key = 0; key < set.perContext; ++key)
            text += "\t\t<string nonTranslatableString=\"" + keyName(key) + "\" locString=\"Text " +
                    std::to_string(key) + " of " + std::to_string(context) + "\"/>\n";
        text += "\t</context>\n";
    }
    return text + "</stringMap>\n";
}

// The smaller set shows, beside the larger one, that the time of a look-up does not grow.
std::vector<Operation> stringOperations() {
    std::vector<Operation> all;
    for (std::size_t const contexts : {10U, 100U}) {
        StringSet const set{contexts, 1000};
        std::string const count = set.size() == 10'000 ? "10,000" : "100,000";
        all.push_back({count + " string-map look-ups (pugixml: 1/1000)",
                       {tibxmlStrings(set), pugixmlStrings(set), nullptr},
                       {set.size() == 100'000 ? 100.0 : 0, 0}});
    }
    StringSet const one{1, 100'000};
    all.push_back({"100,000 in one context (pugixml: 1/1000)",
                   {tibxmlStrings(one), pugixmlStrings(one), nullptr},
                   {100, 0}});
    return all;
}

} // namespace bench
