#pragma once

#include <string>

#include <TibXml/WXmlDoc.h>

namespace tibxml::tool {

/// The document in a file, or in the standard input for "-". Throws `Failure`: with the place, as
/// `file:line:column: reason`, when it is not well-formed, and when it cannot be read.
WXmlDoc loadDocument(std::string const& file);

} // namespace tibxml::tool
