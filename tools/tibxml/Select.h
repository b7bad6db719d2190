#pragma once

#include <string>
#include <vector>

#include <TibXml/WXPath.h>
#include <TibXml/WXmlDoc.h>
#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlNodeList.h>
#include <TibXml/WXmlValueAccessor.h>

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

namespace tibxml::tool {

/// Where a value is: at the first node that `node` selects, in the attribute that `attribute` names
/// ("@id"), or in the text of the node when that is empty. With an attribute an empty `node` is the
/// root element.
struct ValuePath {
    std::string node;
    std::string attribute;
};

/// Takes the name of an attribute off the end of a path: `a/b/@id`, `a/b@id`, `@id`. Whatever is
/// more than the name of an attribute of the node before it (`//@id`, `a | b/@id`, `@*`) stays in
/// the path.
ValuePath valuePath(std::string const& path);

/// The node that the value is at or, with an attribute, its element; an empty handle when there is
/// none. Throws `Failure` for a bad path.
WXmlNode nodeAt(WXmlNode const& root, ValuePath const& path);

/// The value itself, given that node.
WXmlValueAccessor valueAt(WXmlNode const& node, ValuePath const& path);

} // namespace tibxml::tool

namespace tibxml::tool {

/// The string of a path as it is put together from its steps, with single quotes.
CString rebuilt(WXPath path);

} // namespace tibxml::tool
