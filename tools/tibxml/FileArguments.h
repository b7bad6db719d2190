#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace tibxml::tool {

/// Adds the argument FILE to a command, and stores in `file` what its users give.
void addFile(CLI::App& command, std::string& file);

/// The same for one file or more.
void addFiles(CLI::App& command, std::vector<std::string>& files);

} // namespace tibxml::tool
