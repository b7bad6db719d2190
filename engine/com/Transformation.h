// Transforming by stylesheets.
#pragma once

#include <string>

#include <TibXml/platform/Variant.h>
#include <transform/Stylesheet.h>

#include "NodeHandle.h"

namespace tibxml::com {

// All of these throw Failure, TransformError and std::bad_alloc, and then have changed nothing.

// A document or an element to be transformed.
transform::Source sourceOf(NodeHandle const& handle);

// The document object that a handle is. Throws Failure (E_INVALIDARG) for any other node.
DocumentObject& documentOf(NodeHandle const& handle);

// What calls of document() in a stylesheet may read.
transform::DocumentFunction permissionOf(DocumentObject const& stylesheet) noexcept;

// Transforms a document or an element by the stylesheet in another document; the result replaces
// the content of the document in `output`.
void transformToObject(NodeHandle& source, NodeHandle& stylesheet, VARIANT const& output);

// The same with the result as a string.
BSTR transformToText(NodeHandle& source, NodeHandle& stylesheet);

} // namespace tibxml::com
