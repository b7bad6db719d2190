#include "TypeOption.h"

#include <vector>

#include <CLI/CLI.hpp>

#include "ValueType.h"

namespace tibxml::tool {

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
