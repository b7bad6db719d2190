// Binary values: base64 text in an element that says so by an attribute.
#pragma once

#include "NodeHandle.h"

namespace tibxml::com {

// As the calls of IXMLDOMNode with these names; misses are null variants.
VARIANT dataType(NodeHandle& handle);
void setDataType(NodeHandle& handle, BSTR name);
VARIANT typedValue(NodeHandle& handle);
void setTypedValue(NodeHandle& handle, VARIANT const& value);

// Takes the annotation off an element, if it has one. Throws std::bad_alloc.
void removeBinaryAnnotation(tree::Document& document, tree::Node* element);

} // namespace tibxml::com
