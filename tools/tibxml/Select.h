#pragma once

#include <string>
#include <vector>

#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>

namespace CLI {
class App;
} // namespace CLI

namespace tibxml::tool {

/// The option `--ns` of a command: what its users give goes to `declarations`.
void addNamespaceOption(CLI::App& command, std::vector<std::string>& declarations);

/// Lets paths use the prefixes that were declared. Throws `Failure` for a bad declaration.
void useNamespaces(WXmlDoc& document, std::vector<std::string> const& declarations);

/// All nodes, or the first one if there is any, that a path selects from an element. Throw
/// `Failure` with the engine's explanation for a bad path.
WXmlNodeList selectAll(WXmlNode const& element, std::string const& path);
WXmlNode selectFirst(WXmlNode const& element, std::string const& path);

} // namespace tibxml::tool
