// The result of a transformation as a tree of ours.
#pragma once

#include <string_view>

#include <libxml/tree.h>

#include <tree/Document.h>

namespace tibxml::transform {

// What xsl:output has to say about a tree.
struct ResultForm {
    bool hasDeclaration = false;
    std::string_view encoding; // empty when none is asked for or nobody knows it
    int standalone = -1;       // 1 yes, 0 no
    bool isIndented = false;
};

// A new document with libxml2's nodes. Throws TransformError for what is no document: more than one
// element or text at the top, deeper than what can be loaded again.
tree::DocumentRef fromLibrary(xmlDoc const& result, ResultForm const& form);

} // namespace tibxml::transform
