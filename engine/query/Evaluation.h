// What an expression is evaluated in.
#pragma once

#include <cstddef>

#include <tree/Document.h>

namespace tibxml::query {

// The same for the whole of one search.
struct Evaluation {
    tree::Document& document;
    tree::Name const* const* names; // by the numbers that NameResolution gave
};

// Changes from predicate to predicate. Position and size are only set where the expression is known
// to ask for them.
struct Context {
    Evaluation const& evaluation;
    tree::Node* node;
    std::size_t position = 1;
    std::size_t size = 1;
};

} // namespace tibxml::query
