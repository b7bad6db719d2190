// The text of a subtree as people read it: words that markup stands between do not grow together.
#pragma once

#include <string>
#include <string_view>

#include <tree/Document.h>

namespace tibxml::output {

/// All text and CDATA below an element or document in order, with one blank between two pieces
/// where the document is written with a line break between them; of the other nodes their own
/// characters. So it is the same before and after saving. A single piece is given as it is: the
/// view points into the tree then and is valid until the next edit; otherwise it points into
/// `storage`. The node must belong to the document. Throws std::bad_alloc.
std::string_view readableText(tree::Document const& document, tree::Node const* node,
                              std::string& storage);

} // namespace tibxml::output
