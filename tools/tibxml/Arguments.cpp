#include "Arguments.h"

#include <algorithm>
#include <vector>

#include <CLI/CLI.hpp>

#include "Failure.h"
#include "Text.h"
#include "ValueType.h"

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

void addFile(CLI::App& command, std::string& file) {
    command.add_option("FILE", file, "The file; - is the standard input")
        ->option_text("REQUIRED")
        ->required();
}

void addFiles(CLI::App& command, std::vector<std::string>& files) {
    // Where the parser allows any number of arguments it takes a file called "[a,b]" for a list of
    // two. So it gets more as needed than there can be, and accepts fewer.
    constexpr int needed = 1 << 24;
    command.add_option("FILE", files, "The files; - is the standard input")
        ->option_text("REQUIRED")
        ->required()
        ->expected(needed, CLI::detail::expected_max_vector_size)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);
}

namespace {

std::vector<std::string> typeNames() {
    std::vector<std::string> names;
    for (ValueType const& type : valueTypes())
        names.emplace_back(type.name);
    return names;
}

} // namespace

void addTypeOption(CLI::App& command, std::string& type, std::string const& help) {
    command.add_option("--type", type, help)
        ->option_text("TYPE")
        ->check(CLI::IsMember(typeNames()));
}

} // namespace tibxml::tool
