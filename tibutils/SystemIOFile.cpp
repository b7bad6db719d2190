#include <TibXml/tibutils/SystemIOFile.h>

#include <TibXml/platform/Utf.h>

#include "FilePath.h"

#include <array>
#include <cerrno>
#include <climits>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace TibUtils::SystemIO::File {
namespace {

std::optional<std::string> fileNamedBy(wchar_t const* path) {
    return path == nullptr ? std::nullopt : systemPath(path);
}

// O_NONBLOCK keeps a named pipe which nobody reads from stopping the caller for ever.
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
