// What node objects do, whatever their interface: one function per engine call, over the node of a
// handle. They throw Failure, QueryError and std::bad_alloc.
#pragma once

#include <TibXml/engine/IXMLDOMDocument.h>

#include "NodeHandle.h"

namespace tibxml::com {

BSTR nodeName(NodeHandle& handle);
DOMNodeType nodeType(NodeHandle& handle) noexcept;
IXMLDOMNode* parentNode(NodeHandle& handle);
IXMLDOMNodeList* childNodes(NodeHandle& handle);
IXMLDOMDocument* ownerDocument(NodeHandle& handle);
IXMLDOMNode* cloneNode(NodeHandle& handle, bool deep);
BSTR textOf(NodeHandle& handle);
void setText(NodeHandle& handle, BSTR text);
BSTR xmlOf(NodeHandle& handle);
IXMLDOMNodeList* selectNodes(NodeHandle& handle, BSTR expression);
IXMLDOMNode* selectSingleNode(NodeHandle& handle, BSTR expression);

} // namespace tibxml::com
