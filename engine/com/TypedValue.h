// Binary values: base64 text in an element that says so by an attribute.
#pragma once

#include "NodeHandle.h"

namespace tibxml::com {

// As the calls of IXMLDOMNode with these names; misses are null variants.
VARIANT dataType(NodeHandle& handle);
void setDataType(NodeHandle& handle, BSTR name);
VARIANT typedValue(NodeHandle& handle);
void setTypedValue(NodeHandle& handle, VARIANT const& value);

// The attribute that annotates a node as binary; null when there is none.
tree::Node* binaryAnnotation(tree::Document& document, tree::Node const* element) noexcept;

} // namespace tibxml::com
