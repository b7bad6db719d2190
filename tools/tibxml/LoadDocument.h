#pragma once

#include <string>

#include <TibXml/EnginePtr.h>
#include <TibXml/WXmlDoc.h>

namespace tibxml::tool {

/// The document in a file, or in the standard input for "-". Throws `Failure`: with the place, as
/// `file:line:column: reason`, when it is not well-formed, and when it cannot be read.
WXmlDoc loadDocument(std::string const& file);

/// The same as the engine has it, which can tell why saving fails. `WXmlDoc` takes it over.
WXmlDocPtr loadEngineDocument(std::string const& file);

/// The document that a text is, which must be well-formed.
WXmlDocPtr engineDocumentFrom(CString const& text);

/// What becomes of white space between elements.
enum class WhiteSpace { dropped, preserved };

/// The document in a file, with the engine knowing the path unless it is the standard input, so
/// that it finds what stands beside the file and the lines in it. Throws as `loadDocument`.
WXmlDocPtr loadFromPath(std::string const& file, WhiteSpace whiteSpace = WhiteSpace::dropped);

/// A new document of the engine, without content.
WXmlDocPtr newEngineDocument();

} // namespace tibxml::tool
