#pragma once

#include <xpath/token_list.h>

namespace TinyXPath {

// A token list which a grammar can be run over. What the grammar finds is told through the two
// action operations. Paths are taken apart without a grammar, straight from the list, so nothing
// here calls them; they are the place where one would be plugged in.
class token_syntax_decoder : public token_list {
public:
    // A grammar rule was found: which rule, which of its alternatives, and the number of parts.
    virtual void action(int rule, int alternative, int parts) = 0;

    // Asks whoever acts on the rules for a number.
    virtual int question(int rule, int alternative, int parts) = 0;

protected:
    // How far a grammar has read, in tokens.
    int position = 0;
};

} // namespace TinyXPath
