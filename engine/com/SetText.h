// Setting the own text of a node: what each kind of node can hold.
#pragma once

#include <string>

#include <tree/Document.h>

namespace tibxml::com {

// Replaces the content of an element by one text and removes its binary annotation, or replaces the
// characters of another node. The text holds only what XML can hold. Throws Failure (E_FAIL) for a
// node that has no text of its own and for a text that could not be written where it stands, and
// std::bad_alloc; nothing has changed then.
void setContent(tree::Document& document, tree::Node* node, std::string_view text);

// Replaces an element's children by one text, none for the empty text, and removes one of its
// attributes unless that is null. Throws std::bad_alloc and then has changed nothing.
void setElementText(tree::Document& document, tree::Node* element, std::string_view text,
                    tree::Node* attribute);

} // namespace tibxml::com
