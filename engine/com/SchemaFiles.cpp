#include "SchemaFiles.h"

#include <filesystem>
#include <system_error>

#include "Sources.h"

namespace tibxml::com {

std::string SchemaFiles::find(std::string const& path) {
    std::string const file = existingFile(path);
    if (file.empty()) return {};
    std::error_code error;
    std::filesystem::path const canonical = std::filesystem::canonical(file, error);
    return error ? std::string{} : canonical.native();
}

bool SchemaFiles::open(std::string const& found,
                       std::function<void(reader::ByteSource&)> const& use) {
    return useFile(found, use);
}

} // namespace tibxml::com
