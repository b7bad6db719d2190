// One element in two layers: a user's document over one with defaults.
#pragma once

#include <string>
#include <vector>

#include "../Operation.h"

namespace bench {

// Both documents are settings. The user's has the first few items only.
struct Layers {
    std::string const& defaults;
    std::string const& user;
};

// Reading the attribute `id` of item[@id='N'], from the user's document if it is there and else
// from the defaults. TibXml has a composite node, made anew each time; callers of the others ask
// the one document and then the other, with a query compiled beforehand.
ContenderPtr tibxmlRead(Layers const& layers, int id);
ContenderPtr pugixmlRead(Layers const& layers, int id);
ContenderPtr libxml2Read(Layers const& layers, int id);

// Writing the attribute `size` of window/position, an element that neither document has, and taking
// what that made out of the user's document again.
ContenderPtr tibxmlFirstWrite(Layers const& layers);
ContenderPtr pugixmlFirstWrite(Layers const& layers);
ContenderPtr libxml2FirstWrite(Layers const& layers);

std::vector<Operation> layersOperations();

} // namespace bench
