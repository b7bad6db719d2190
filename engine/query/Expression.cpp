#include "Expression.h"

#include <tree/TextContent.h>

#include "Numbers.h"

namespace tibxml::query {

bool NumberExpression::boolean(Context const& context) const {
    double const value = number(context);
    return value < 0 || value > 0; // neither zero nor NaN
}

std::string_view NumberExpression::string(Context const& context, std::string& storage) const {
    storage.clear();
    appendNumber(number(context), storage);
    return storage;
}

bool StringExpression::boolean(Context const& context) const {
    std::string storage;
    return !string(context, storage).empty();
}

double StringExpression::number(Context const& context) const {
    std::string storage;
    return toNumber(string(context, storage));
}

tree::Node* NodeExpression::first(Context const& context) const {
    tree::Node* found = nullptr;
    visit(context, Order::document, [&found](tree::Node* node) {
        found = node;
        return true;
    });
    return found;
}

bool NodeExpression::boolean(Context const& context) const {
    return visit(context, Order::any, [](tree::Node*) { return true; });
}

double NodeExpression::number(Context const& context) const {
    std::string storage;
    return toNumber(string(context, storage));
}

std::string_view NodeExpression::string(Context const& context, std::string& storage) const {
    tree::Node const* const node = first(context);
    return node != nullptr ? tree::stringValue(node, storage) : std::string_view{};
}

} // namespace tibxml::query
