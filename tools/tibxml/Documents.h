#pragma once

#include <optional>
#include <string>

#include <TibXml/WXmlDoc.h>

#include "InputFile.h"

namespace tibxml::tool {

/// The document in a file, or in the standard input for "-". Throws `Failure`: with the place, as
/// `file:line:column: reason`, when it is not well-formed, and when it cannot be read.
WXmlDoc loadDocument(std::string const& file);

/// The document that a text is, which must be well-formed.
WXmlDoc documentFrom(CString const& text);

/// What becomes of white space between elements.
enum class WhiteSpace { dropped, preserved };

/// The document in a file, with the engine knowing the path unless it is the standard input, so
/// that it finds what stands beside the file and the lines in it. Throws as `loadDocument`.
WXmlDoc loadFromPath(std::string const& file, WhiteSpace whiteSpace = WhiteSpace::dropped);

} // namespace tibxml::tool

class WXmlSax;

namespace tibxml::tool {

/// Calls the callbacks of a SAX object with what is in a file. Throws `Failure` when the file
/// cannot be read (status failed) or is not well-formed (status not found: "name:line:column:
/// reason"), and what a callback throws. `name` is the file's name in messages.
void streamDocument(WXmlSax& sax, InputFile& input, std::string const& name);

/// Throws the same `Failure` when the engine has not read the whole of a file.
void requireRead(bool isDone, InputFile const& input, std::string const& name);

} // namespace tibxml::tool

namespace CLI {
class App;
} // namespace CLI

namespace tibxml::tool {

/// The option `-o` of a command that changes FILE: where the result goes instead.
void addOutputOption(CLI::App& command, std::optional<std::string>& output);

/// Writes a document to a file, which is replaced as a whole or not at all, or to the standard
/// output for "-". Throws `Failure` with the reason, and `OutputFailure`.
void saveDocument(WXmlDoc const& document, std::string const& file);

} // namespace tibxml::tool
