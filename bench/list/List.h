// Selecting many nodes and reading the text of each.
#pragma once

#include <string>
#include <vector>

#include "../Operation.h"

namespace bench {

ContenderPtr tibxmlList(std::string const& document);
ContenderPtr pugixmlList(std::string const& document);
ContenderPtr libxml2List(std::string const& document);

std::vector<Operation> listOperations();

} // namespace bench
