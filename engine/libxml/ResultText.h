// The result of a transformation as a text.
#pragma once

#include <string>
#include <string_view>

#include <libxslt/xsltInternals.h>

#include <transform/Stylesheet.h>

namespace tibxml::transform {

// The encoding that a stylesheet asks for; empty when it asks for none or for one that libxml2 does
// not know.
std::string_view knownEncoding(xsltStylesheet* style) noexcept;

// A result in the output method of its stylesheet, which may add to it what that method demands.
// Throws TransformError and std::bad_alloc.
std::string textOf(xsltStylesheet* style, xmlDoc& result, TextEncoding encoding);

} // namespace tibxml::transform
