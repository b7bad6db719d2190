// Which namespace declarations an element can carry, and what names mean on it.
#pragma once

#include <optional>
#include <string_view>

#include "NodeHandle.h"

namespace tibxml::com {

// Throws Failure (E_FAIL) when `value` in the namespace declaration `declaration` on `element`
// could not be written: bound to what is reserved, a prefix bound to nothing, or against a name
// that the element or one of its attributes has.
void checkDeclaration(tree::Node const* element, tree::Node const* declaration,
                      std::string_view value);

// The namespace that a prefix, which is not empty, stands for on an element by its own declarations
// and names, of which `except` does not count: names get their declarations when they are written.
// Nothing when it does not use the prefix. Valid until the next edit.
std::optional<std::string_view> meaningOn(tree::Node const* element, std::string_view prefix,
                                          tree::Node const* except = nullptr) noexcept;

// The same by the nearest of the element and its ancestors.
std::optional<std::string_view> meaningAt(tree::Node const* element, std::string_view prefix,
                                          tree::Node const* except = nullptr) noexcept;

// The name that an attribute of this name can have on an element, where it takes the place of `old`
// unless that is null: itself, or with another prefix where its own stands for another namespace on
// that very element, or where it has a namespace without a prefix.
tree::Name* fittingName(tree::Document& document, tree::Node const* element, tree::Name* name,
                        tree::Node const* old);

// A prefix whose namespace was left open takes the one that it has where the node is put.
bool isUnresolved(tree::Name const& name) noexcept;

// The name of the document's that a name stands for at an element: itself, or, when it is
// unresolved, the one with the namespace that the prefix has there (at none, for a null element).
// Throws Failure (E_FAIL) when it has none, std::bad_alloc.
tree::Name* resolvedAt(tree::Document& document, tree::Node const* element, tree::Name* name);

// The same for the name of a node, which may belong to another document.
tree::Name* nameAt(tree::Document& document, tree::Node const* element, NodeHandle const& node);

} // namespace tibxml::com
