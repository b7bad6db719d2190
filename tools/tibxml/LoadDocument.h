#pragma once

#include <string>

#include <TibXml/WXmlDoc.h>

namespace tibxml::tool {

/// The document in a file, or in the standard input for "-". Throws `Failure`: with the place, as
/// `file:line:column: reason`, when it is not well-formed, and when it cannot be read.
WXmlDoc loadDocument(std::string const& file);

/// A new document of the engine, without content.
WXmlDocPtr newEngineDocument();

/// The document in a file with all its white space. The engine knows where it is from, unless it is
/// the standard input. Throws `Failure` as `loadDocument` does.
WXmlDocPtr loadExactly(std::string const& file);

} // namespace tibxml::tool
