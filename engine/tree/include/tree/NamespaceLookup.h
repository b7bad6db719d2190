// What prefixes mean at a place in the tree.
#pragma once

#include <optional>
#include <string_view>

#include <tree/Node.h>

namespace tibxml::tree {

// The namespace that a prefix (empty: the default) stands for at an element, by the nearest
// declaration on it or an ancestor; empty where it was declared away, nothing where it is not
// declared at all. "xml" is always declared. Valid until the next edit.
std::optional<std::string_view> namespaceAt(Node const* element, std::string_view prefix) noexcept;

// The prefix that an attribute declares ("" for xmlns); only for Name::declaresNamespace.
std::string_view declaredPrefix(Node const* declaration) noexcept;

// A prefix that stands for a namespace at an element; empty when there is none.
std::string_view prefixAt(Node const* element, std::string_view uri) noexcept;

} // namespace tibxml::tree
