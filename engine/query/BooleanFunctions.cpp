#include "Functions.h"

namespace tibxml::query::function {

bool toBoolean(Context const& context, Arguments const& arguments) {
    return arguments[0]->boolean(context);
}

bool negate(Context const& context, Arguments const& arguments) {
    return !arguments[0]->boolean(context);
}

bool alwaysTrue(Context const&, Arguments const&) {
    return true;
}

bool alwaysFalse(Context const&, Arguments const&) {
    return false;
}

bool startsWith(Context const& context, Arguments const& arguments) {
    std::string storage[2];
    std::string_view const text = arguments[0]->string(context, storage[0]);
    return text.starts_with(arguments[1]->string(context, storage[1]));
}

bool contains(Context const& context, Arguments const& arguments) {
    std::string storage[2];
    std::string_view const text = arguments[0]->string(context, storage[0]);
    return text.find(arguments[1]->string(context, storage[1])) != std::string_view::npos;
}

} // namespace tibxml::query::function
