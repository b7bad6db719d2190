// What nodes hold: setting their own text, and binary values, which are base64 text in an element
// that says so by an attribute.
#pragma once

#include <string>

#include <tree/Document.h>

#include "NodeHandle.h"

namespace tibxml::com {

// Replaces the content of an element by one text and removes its binary annotation, or replaces the
// characters of another node. The text holds only what XML can hold. Throws Failure (E_FAIL) for a
// node that has no text of its own and for a text that could not be written where it stands, and
// std::bad_alloc; nothing has changed then.
void setContent(tree::Document& document, tree::Node* node, std::string_view text);

// Replaces an element's children by one text, none for the empty text, and removes one of its
// attributes unless that is null. Throws std::bad_alloc and then has changed nothing.
void setElementText(tree::Document& document, tree::Node* element, std::string_view text,
                    tree::Node* attribute);

// As the calls of IXMLDOMNode with these names; misses are null variants.
VARIANT dataType(NodeHandle& handle);
void setDataType(NodeHandle& handle, BSTR name);
VARIANT typedValue(NodeHandle& handle);
void setTypedValue(NodeHandle& handle, VARIANT const& value);

// The attribute that annotates a node as binary; null when there is none.
tree::Node* binaryAnnotation(tree::Document& document, tree::Node const* element) noexcept;

} // namespace tibxml::com
