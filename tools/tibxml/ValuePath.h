#pragma once

#include <string>

#include <TibXml/WXmlNode.h>
#include <TibXml/WXmlValueAccessor.h>

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
