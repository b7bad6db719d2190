#include "Layers.h"

#include "../Settings.h"

namespace bench {

namespace {

Operation read(std::string name, Layers const& layers, int id) {
    return {std::move(name),
            {tibxmlRead(layers, id), pugixmlRead(layers, id), libxml2Read(layers, id)},
            {}};
}

} // namespace

std::vector<Operation> layersOperations() {
    constexpr std::size_t userItems = 5;
    static std::string const user = settings(userItems);
    Layers const layers{smallSettings(), user};
    std::vector<Operation> all;
    all.push_back(read("composite read of what the user has", layers, 3));
    all.push_back(read("composite read of a default", layers, 7));
    all.push_back({"composite first write, and taking it out",
                   {tibxmlFirstWrite(layers), pugixmlFirstWrite(layers), libxml2FirstWrite(layers)},
                   {}});
    return all;
}

} // namespace bench
