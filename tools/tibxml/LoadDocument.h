#pragma once

#include <string>

#include <TibXml/EnginePtr.h>
#include <TibXml/WXmlDoc.h>

namespace tibxml::tool {

/// The document in a file, or in the standard input for "-". Throws `Failure`: with the place, as
/// `file:line:column: reason`, when it is not well-formed, and when it cannot be read.
WXmlDoc loadDocument(std::string const& file);

/// The same, with the engine knowing the path, so that it finds what stands beside the file and
/// the lines in it.
WXmlDocPtr loadFromPath(std::string const& file);

} // namespace tibxml::tool
