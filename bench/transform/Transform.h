// Transforming the settings by a stylesheet that copies and changes them, copying a document, and
// putting one aside in a file.
#pragma once

#include <string>
#include <vector>

#include "../Operation.h"

namespace bench {

// Copies everything, doubles the values and leaves out comments.
extern char const* const stylesheetText;

ContenderPtr tibxmlTransform(std::string const& document);
ContenderPtr libxsltTransform(std::string const& document);

// From bytes to bytes.
ContenderPtr tibxmlReadTransformWrite(std::string const& document);
ContenderPtr libxsltReadTransformWrite(std::string const& document);

ContenderPtr tibxmlClone(std::string const& document);
ContenderPtr libxml2Clone(std::string const& document);

ContenderPtr tibxmlBackup(std::string const& document);
ContenderPtr tibxmlRestore(std::string const& document);

std::vector<Operation> transformOperations();

} // namespace bench
