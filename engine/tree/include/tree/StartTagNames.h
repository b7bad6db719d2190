// The names that one element and its attributes are written with, and the declarations that must be
// added for them to mean what the tree says.
#pragma once

#include <string_view>
#include <vector>

#include <tree/Node.h>

#include <tree/NamespaceScope.h>

namespace tibxml::tree {

struct StartTagNames {
    struct AttributePrefix {
        Node const* attribute;
        std::string_view prefix;
    };

    std::string_view elementPrefix;
    std::vector<Binding> added;
    std::vector<AttributePrefix> changed; // where the prefix is not the attribute's own, in order
};

// Enters the element's own declarations and the added ones into the scope. `wanted` are
// declarations to be added whether the element needs them or not, unless it gives those prefixes
// another meaning.
StartTagNames resolveNames(Node const& element, std::vector<Binding> const& wanted,
                           NamespaceScope& scope);

// Whether an attribute is written at all. Declarations that XML forbids, or that would put an
// element without namespace into one, are left out: names decide, declarations follow.
bool isWritten(Node const& attribute) noexcept;

// The namespaces that are declared outside the subtree and used by names in it.
std::vector<Binding> inheritedNamespaces(Node const& top);

} // namespace tibxml::tree
