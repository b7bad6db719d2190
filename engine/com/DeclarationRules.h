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

// The name for a node at an element, as a record of the element's document: its own, or, for a
// prefix whose namespace was left open, the one with the namespace that the prefix has there (at
// none, for a null element). Throws Failure (E_FAIL) when it has none, std::bad_alloc.
tree::Name* nameAt(tree::Document& document, tree::Node const* element, tree::Name* name);

} // namespace tibxml::com
