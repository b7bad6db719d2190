// Which namespace declarations an element can carry.
#pragma once

#include <string_view>

#include "NodeHandle.h"

namespace tibxml::com {

// Throws Failure (E_FAIL) when `value` in the namespace declaration `declaration` on `element`
// could not be written: bound to what is reserved, a prefix bound to nothing, or against a name
// that the element or one of its attributes has.
void checkDeclaration(tree::Node const* element, tree::Node const* declaration,
                      std::string_view value);

// A prefix whose namespace was left open takes the one that it has where the node is put.
bool isUnresolved(tree::Name const& name) noexcept;

// The name of the document's that a name stands for at an element: itself, or, when it is
// unresolved, the one with the namespace that the prefix has there (at none, for a null element).
// Throws Failure (E_FAIL) when it has none, std::bad_alloc.
tree::Name* resolvedAt(tree::Document& document, tree::Node const* element, tree::Name* name);

// The same for the name of a node, which may belong to another document.
tree::Name* nameAt(tree::Document& document, tree::Node const* element, NodeHandle const& node);

} // namespace tibxml::com
