#pragma once

#include <string>

namespace CLI {
class App;
} // namespace CLI

namespace tibxml::tool {

/// The option `--type` of a command, one of the names of `valueTypes()`: what its users give goes
/// to `type`. `help` tells what the types are for, and which there are.
void addTypeOption(CLI::App& command, std::string& type, std::string const& help);

} // namespace tibxml::tool
