#include "Arguments.h"

#include <algorithm>

#include "Failure.h"
#include "Text.h"

namespace tibxml::tool {

namespace {

// "--default=" names an option and gives it the empty value.
bool isOptionWithEmptyValue(std::string const& argument) {
    return argument.size() > 3 && argument.starts_with("--") &&
           argument.find('=') == argument.size() - 1;
}

void requireUtf8(std::vector<std::string> const& arguments) {
    auto const bad = std::find_if_not(arguments.begin(), arguments.end(), isUtf8);
    if (bad == arguments.end()) return;
    throw failure(ExitStatus::failed, "argument " + std::to_string(bad - arguments.begin() + 1) +
                                          " is not valid UTF-8");
}

// The parser would take the argument after such an option for its value.
std::vector<std::string> withSeparateEmptyValues(std::vector<std::string> const& arguments) {
    std::vector<std::string> result;
    auto const options = std::find(arguments.begin(), arguments.end(), "--");
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        if (argument < options && isOptionWithEmptyValue(*argument)) {
            result.push_back(argument->substr(0, argument->size() - 1));
            result.emplace_back();
        } else {
            result.push_back(*argument);
        }
    }
    return result;
}

} // namespace

std::vector<std::string> argumentsOf(int count, char const* const* arguments) {
    std::vector<std::string> texts;
    if (count > 1) texts.assign(arguments + 1, arguments + count);
    requireUtf8(texts);
    return withSeparateEmptyValues(texts);
}

} // namespace tibxml::tool
