// The attribute of an element by its expanded name.
#pragma once

#include <tree/Name.h>
#include <tree/Node.h>

namespace tibxml::query {

// `expanded` is a record that stands for an expanded name, or null. Gives null when there is no
// such attribute and for nodes that are no elements.
inline tree::Node* attributeNamed(tree::Node const* element, tree::Name const* expanded) noexcept {
    for (tree::Node* a = element->firstAttribute(); a != nullptr; a = a->next)
        if (a->name->expanded == expanded) return a;
    return nullptr;
}

} // namespace tibxml::query
