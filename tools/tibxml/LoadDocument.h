#pragma once

#include <string>

#include <TibXml/WXmlDoc.h>

namespace tibxml::tool {

/// The document in a file, or in the standard input for "-". Throws `Failure`: with the place, as
/// `file:line:column: reason`, when it is not well-formed, and when it cannot be read.
WXmlDoc loadDocument(std::string const& file);

/// The same as the engine's own object.
WXmlDocPtr loadEngineDocument(std::string const& file);

/// The stylesheet in a file, with the white space that it may want to write. The engine knows the
/// file, from which others are found, unless it is the standard input. Throws as `loadDocument`.
WXmlDocPtr loadStylesheet(std::string const& file);

/// A new document of the engine, without content.
WXmlDocPtr newEngineDocument();

} // namespace tibxml::tool
