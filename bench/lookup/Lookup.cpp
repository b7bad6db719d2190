#include "Lookup.h"

#include "../Settings.h"

namespace bench {

namespace {

Operation operation(std::string name, Lookup const& lookup, Targets targets) {
    return {std::move(name),
            {tibxmlLookup(lookup), pugixmlLookup(lookup), libxml2Lookup(lookup)},
            targets};
}

} // namespace

std::vector<Operation> lookupOperations() {
    std::string const& small = smallSettings();
    std::string const& large = largeSettings();
    std::vector<Operation> all;
    all.push_back(operation("item[@id='7']/value, 2 KB", {small, 7, false}, {1, 0}));
    all.push_back(operation("item[@id='10']/value, 5 MB", {large, 10, false}, {100, 100}));
    all.push_back(operation("item[@id='49990']/value, 5 MB", {large, 49'990, false}, {2, 2}));
    all.push_back(
        operation("the same, first look-up of a fresh document", {large, 49'990, true}, {}));
    all.push_back({"20 look-ups all over 5 MB",
                   {tibxmlScattered(large), pugixmlScattered(large), libxml2Scattered(large)},
                   {}});
    return all;
}

} // namespace bench
