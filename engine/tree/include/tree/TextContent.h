// The text of a subtree.
#pragma once

#include <string>
#include <string_view>

#include <tree/Node.h>

namespace tibxml::tree {

// The string value of a node as XPath defines it: of an element or document the text and CDATA of
// all descendants in order, of the others their own characters. When no joining is needed the view
// points into the tree and is valid until the next edit; otherwise it points into `storage`.
std::string_view stringValue(Node const* node, std::string& storage);

// Appends the same.
void appendStringValue(Node const* node, std::string& out);

} // namespace tibxml::tree
