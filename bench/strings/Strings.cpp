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
        for (std::size_t key = 0; key < set.perContext; ++key) {
            text += "\t\t<string nonTranslatableString=\"" + keyName(key) + "\" locString=\"Text " +
                    std::to_string(key) + " of " + std::to_string(context) + "\"/>\n";
        }
        text += "\t</context>\n";
    }
    return text + "</stringMap>\n";
}

namespace {

Operation lookUps(std::string const& name, StringSet const& set, double target) {
    return {
        name + ", pugixml 1/997", {tibxmlStrings(set), pugixmlStrings(set), nullptr}, {target, 0}};
}

} // namespace

// The smaller set shows, beside the larger one, that the time of a look-up hardly grows. In many
// contexts a linear search is over soon.
std::vector<Operation> stringOperations() {
    std::vector<Operation> all;
    all.push_back(lookUps("10,000 string-map look-ups", {1, 10'000}, 0));
    all.push_back(lookUps("100,000 string-map look-ups", {1, 100'000}, 100));
    all.push_back(lookUps("100,000 look-ups in 100 contexts", {100, 1000}, 0));
    return all;
}

} // namespace bench
