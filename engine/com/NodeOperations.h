// What node objects do, whatever their interface: one function per engine call, over the node of a
// handle, and what makes new nodes from names that callers give. They throw Failure, QueryError and
// std::bad_alloc.
#pragma once

#include <string_view>

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

// A detached node of a document, of a DOMNodeType that can be created, without content. Throws
// Failure with E_FAIL for a name that is not valid and E_INVALIDARG for another type.
tree::Node* newNode(tree::Document& document, LONG type, std::wstring_view name,
                    std::wstring_view namespaceUri);

// The object for a node just made: a reference for the caller. The node is destroyed when there is
// no memory for the object.
IXMLDOMNode* wrapNew(DocumentObject& owner, tree::Document& storage, tree::Node* node);

// The record for a qualified name in a namespace, or, without one, in the one that the prefixes
// "xml" and "xmlns" have everywhere. Throws Failure (E_FAIL) for a name that is not valid or cannot
// be in that namespace.
tree::Name* internName(tree::Document& document, std::wstring_view qualifiedName,
                       std::wstring_view namespaceUri);

} // namespace tibxml::com
