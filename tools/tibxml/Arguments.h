#pragma once

#include <string>
#include <vector>

namespace tibxml::tool {

/// The arguments of the program without its name, ready to be parsed. Throws `Failure` for one that
/// is not UTF-8.
std::vector<std::string> argumentsOf(int count, char const* const* arguments);

} // namespace tibxml::tool

namespace CLI {
class App;
} // namespace CLI

namespace tibxml::tool {

/// Adds the argument FILE to a command, and stores in `file` what its users give.
void addFile(CLI::App& command, std::string& file);

/// The same for one file or more.
void addFiles(CLI::App& command, std::vector<std::string>& files);

} // namespace tibxml::tool

namespace CLI {
class App;
} // namespace CLI

namespace tibxml::tool {

/// The option `--type` of a command, one of the names of `valueTypes()`: what its users give goes
/// to `type`. `help` says what the types are for, and which there are.
void addTypeOption(CLI::App& command, std::string& type, std::string const& help);

} // namespace tibxml::tool
