// Making new nodes from names that callers give.
#pragma once

#include <string_view>

#include "NodeHandle.h"

namespace tibxml::com {

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
