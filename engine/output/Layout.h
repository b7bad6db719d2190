// Where white space may be added or must be protected, so that a reader which drops white space
// between markup gets the same tree back.
#pragma once

#include <tree/Name.h>
#include <tree/Node.h>

namespace tibxml::output {

/// Nodes that leave a trace in the text, which empty texts do not. Null when there is none.
inline tree::Node const* writtenFrom(tree::Node const* node) noexcept {
    while (node != nullptr && node->is(tree::NodeKind::text) && node->text().empty())
        node = node->next;
    return node;
}

inline tree::Node const* firstWritten(tree::Node const& parent) noexcept {
    return writtenFrom(parent.firstChild());
}

/// White space next to a text would become part of it. A CDATA section stays apart from what is
/// around it.
inline bool allowsBreak(tree::Node const* neighbour) noexcept {
    return neighbour == nullptr || !neighbour->is(tree::NodeKind::text);
}

/// Other values of xml:space than "preserve" and "default" mean nothing, to readers too.
inline bool isSpaceAttribute(tree::Node const& attribute) noexcept {
    tree::Name const& name = *attribute.name;
    return name.local == "space" && name.uri == tree::xmlNamespace;
}

} // namespace tibxml::output
