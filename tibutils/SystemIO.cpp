#include <TibXml/platform/Utf.h>
#include <TibXml/tibutils/DataEncoding.h>
#include <TibXml/tibutils/SystemIOFile.h>
#include <TibXml/tibutils/SystemIOPath.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace TibUtils::SystemIO {
namespace {

// The form in which the system takes a path. Nothing for a path that cannot name a file: one which
// is empty, holds a NUL, or has no UTF-8 form. Replacing what has none could name another file.
std::optional<std::string> systemPath(std::wstring_view path) {
    std::string bytes;
    bool const nul = path.find(L'\0') != std::wstring_view::npos;
    if (path.empty() || nul || !tibxml::platform::appendUtf8(bytes, path)) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace
} // namespace TibUtils::SystemIO

namespace TibUtils::SystemIO::File {
namespace {

std::optional<std::string> fileNamedBy(wchar_t const* path) {
    return path == nullptr ? std::nullopt : systemPath(path);
}

// O_NONBLOCK keeps a named pipe without a reader from stopping the caller for ever.
int openForWriting(char const* path) {
    constexpr int flags = O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    int descriptor = -1;
    do {
        descriptor = ::open(path, flags, ownerOnly);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

} // namespace

bool ProbeCreateFile(wchar_t const* path) {
    auto const file = fileNamedBy(path);
    int const descriptor = file ? openForWriting(file->c_str()) : -1;
    return descriptor >= 0 && ::close(descriptor) == 0;
}

// unlink() and not remove(), which would take empty directories too. Needs no memory, so that it
// works when clearing up because there is none. The system knows no longer paths.
bool Delete(wchar_t const* path) {
    std::wstring_view const name = path == nullptr ? std::wstring_view{} : path;
    std::array<char, PATH_MAX> file; // NOLINT(*-member-init): written below
    auto const size = tibxml::platform::utf8Size(name);
    if (!size.valid || size.bytes >= file.size()) {
        return false;
    }
    *tibxml::platform::narrowToUtf8(name, file.data()) = '\0';
    return ::unlink(file.data()) == 0;
}

bool Exists(wchar_t const* path) {
    auto const file = fileNamedBy(path);
    if (!file) {
        return false;
    }
    std::error_code unknown;
    auto const status = std::filesystem::status(*file, unknown);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

} // namespace TibUtils::SystemIO::File

namespace TibUtils::SystemIO::Path {
namespace {

// What a part of the name is when it is given, or else; nothing when it would lead out of the
// directory or is not a name at all.
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
// is no such directory, or none whose name a wide string can hold.
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
// letters as long as another process was faster. The path of the file, or an empty string. Without
// memory to return the path there is no file.
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
