// Chooses the form of a comparison that answers it fastest.
#pragma once

#include "Comparison.h"

namespace tibxml::query {

ExpressionPtr makeComparison(Relation relation, ExpressionPtr left, ExpressionPtr right);

} // namespace tibxml::query
