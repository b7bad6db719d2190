// `@k='v'`, the most frequent of all predicates.
#pragma once

#include <cstdint>
#include <string>

#include "AttributeLookup.h"
#include "Evaluation.h"

namespace tibxml::query {

struct AttributeEquals {
    std::uint32_t name; // by the number that NameResolution gave
    std::string value;

    bool holds(Evaluation const& evaluation, tree::Node const* node) const noexcept {
        tree::Node const* const attribute = attributeNamed(node, evaluation.names[name]);
        return attribute != nullptr && attribute->text() == value &&
               !attribute->name->declaresNamespace;
    }
};

} // namespace tibxml::query
