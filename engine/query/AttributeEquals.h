// `@k='v'`, the most frequent of all predicates.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "AttributeLookup.h"
#include "Expression.h"

namespace tibxml::query {

class AttributeEquals final : public BooleanExpression {
public:
    AttributeEquals(std::uint32_t name, std::string value) noexcept
        : name_{name},
          value_{std::move(value)} {}

    std::uint32_t name() const noexcept { return name_; }

    std::string const& value() const noexcept { return value_; }

    bool holds(Evaluation const& evaluation, tree::Node const* node) const noexcept {
        tree::Name const* const name = evaluation.names[name_];
        tree::Node const* const attribute = attributeNamed(node, name);
        return attribute != nullptr && attribute->text() == value_ &&
               !attribute->name->declaresNamespace;
    }

    bool boolean(Context const& context) const override {
        return holds(context.evaluation, context.node);
    }

private:
    std::uint32_t name_;
    std::string value_;
};

} // namespace tibxml::query
