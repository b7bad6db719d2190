#pragma once

// Stylesheets and documents to transform.

#include <span>

namespace transforming {

struct Pair {
    char const* name;
    char const* content; ///< of the stylesheet
    char const* document;
};

std::span<Pair const> templatePairs() noexcept;
std::span<Pair const> constructionPairs() noexcept;
std::span<Pair const> expressionPairs() noexcept;

} // namespace transforming
