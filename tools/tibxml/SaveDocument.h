#pragma once

#include <optional>
#include <string>

#include <TibXml/EnginePtr.h>

namespace CLI {
class App;
} // namespace CLI

namespace tibxml::tool {

/// The option `-o` of a command that changes FILE: where the result goes instead.
void addOutputOption(CLI::App& command, std::optional<std::string>& output);

/// Writes a document to a file, which is replaced as a whole or not at all, or to the standard
/// output for "-". Throws `Failure` with the reason, and `OutputFailure`.
void saveDocument(WXmlDocPtr const& document, std::string const& file);

} // namespace tibxml::tool
