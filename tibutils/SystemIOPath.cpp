#include <TibXml/tibutils/SystemIOPath.h>

#include <TibXml/platform/Utf.h>
#include <TibXml/tibutils/DataEncoding.h>

#include "FilePath.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace TibUtils::SystemIO::Path {
namespace {

// What a part of the name is when it is given, or else; nothing when it would lead out of the
// directory or is no name at all.
std::optional<std::string> partOfName(wchar_t const* part, std::string_view otherwise) {
    if (part == nullptr) {
        return std::string(otherwise);
    }
    if (*part == L'\0') {
        return std::string();
    }
    auto bytes = systemPath(part);
    bool const leavesDirectory = bytes && bytes->find('/') != std::string::npos;
    return leavesDirectory ? std::nullopt : bytes;
}

std::filesystem::path temporaryDirectory() {
    std::error_code none;
    return std::filesystem::temp_directory_path(none);
}

// Absolute, so that the file's path stays good when the current directory changes. Empty when there
// is no such directory, or none whose name a wide string can tell.
std::filesystem::path placeOf(wchar_t const* directory) {
    bool const given = directory != nullptr && *directory != L'\0';
    auto const path =
        given ? std::filesystem::path(systemPath(directory).value_or("")) : temporaryDirectory();
    if (path.empty() || !tibxml::platform::isValidUtf8(path.native())) {
        return {};
    }
    std::error_code none;
    return std::filesystem::absolute(path, none);
}

// The system chooses the letters, makes the file so that only its owner may use it, and takes other
// letters as long as somebody was faster. The path of the file, or an empty string. Without memory
// to tell the path there is no file.
CString makeFile(std::string const& begin, std::string const& end) {
    std::string path = begin + "XXXXXX" + end;
    int const descriptor = ::mkostemps(path.data(), static_cast<int>(end.size()), O_CLOEXEC);
    if (descriptor < 0) {
        return {};
    }
    ::close(descriptor);
    try {
        return DataEncoding::Utf8Decode(path);
    } catch (...) {
        ::unlink(path.c_str());
        throw;
    }
}

} // namespace

CString GetTempFileNameW(wchar_t const* directory, wchar_t const* prefix,
                         wchar_t const* extension) {
    auto const place = placeOf(directory);
    auto const begin = partOfName(prefix, "tib");
    auto const end = partOfName(extension, ".tmp");
    if (place.empty() || !begin || !end) {
        return {};
    }
    return makeFile((place / *begin).native(), *end);
}

} // namespace TibUtils::SystemIO::Path
