#include "List.h"

#include "../Settings.h"

namespace bench {

std::vector<Operation> listOperations() {
    std::string const& large = largeSettings();
    std::vector<Operation> all;
    all.push_back({"//item[@kind='k3']/name and the text of each",
                   {tibxmlList(large), pugixmlList(large), libxml2List(large)},
                   {}});
    return all;
}

} // namespace bench
