#include "FileArguments.h"

#include <CLI/CLI.hpp>

namespace tibxml::tool {

void addFile(CLI::App& command, std::string& file) {
    command.add_option("FILE", file, "The file; - is the standard input")
        ->option_text("REQUIRED")
        ->required();
}

void addFiles(CLI::App& command, std::vector<std::string>& files) {
    // Where the parser allows any number of arguments it takes a file called "[a,b]" for a list of
    // two. So it is told that more are needed than there can be, and to be content with fewer.
    constexpr int needed = 1 << 24;
    command.add_option("FILE", files, "The files; - is the standard input")
        ->option_text("REQUIRED")
        ->required()
        ->expected(needed, CLI::detail::expected_max_vector_size)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false);
}

} // namespace tibxml::tool
