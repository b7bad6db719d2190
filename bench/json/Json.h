// A document as JSON text, and back to XML.
#pragma once

#include <string>
#include <vector>

#include "../Operation.h"

namespace bench {

ContenderPtr tibxmlJson(std::string const& document);

std::vector<Operation> jsonOperations();

} // namespace bench
