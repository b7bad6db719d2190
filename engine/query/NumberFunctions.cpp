#include <cmath>

#include <tree/TextContent.h>

#include "Characters.h"
#include "Functions.h"
#include "Numbers.h"

namespace tibxml::query::function {

namespace {

NodeExpression const& nodesOf(Arguments const& arguments) noexcept {
    return static_cast<NodeExpression const&>(*arguments[0]);
}

} // namespace

double toNumber(Context const& context, Arguments const& arguments) {
    return arguments[0]->number(context);
}

double count(Context const& context, Arguments const& arguments) {
    std::size_t found = 0;
    nodesOf(arguments).visit(context, Order::any, [&found](tree::Node*) {
        ++found;
        return false;
    });
    return static_cast<double>(found);
}

// In document order, because the order of additions shows in the last digits.
double sum(Context const& context, Arguments const& arguments) {
    double total = 0;
    std::string storage;
    nodesOf(arguments).visit(context, Order::document, [&](tree::Node* node) {
        total += query::toNumber(tree::stringValue(node, storage));
        return false;
    });
    return total;
}

double floor(Context const& context, Arguments const& arguments) {
    return std::floor(arguments[0]->number(context));
}

double ceiling(Context const& context, Arguments const& arguments) {
    return std::ceil(arguments[0]->number(context));
}

double round(Context const& context, Arguments const& arguments) {
    return roundNumber(arguments[0]->number(context));
}

double stringLength(Context const& context, Arguments const& arguments) {
    std::string storage;
    return static_cast<double>(countCharacters(arguments[0]->string(context, storage)));
}

} // namespace tibxml::query::function
