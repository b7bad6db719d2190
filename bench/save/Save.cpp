#include "Save.h"

#include "../Settings.h"

namespace bench {

std::vector<Operation> saveOperations() {
    std::string const& large = largeSettings();
    std::vector<Operation> all;
    all.push_back({"save 5 MB to a wide string",
                   {tibxmlSave(large), pugixmlSave(large), libxml2Save(large)},
                   {0, 1.5}});
    return all;
}

} // namespace bench
