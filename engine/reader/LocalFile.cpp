#include <reader/LocalFile.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tibxml::reader {

namespace {

std::string decoded(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        char const* const digits = text.data() + i + 1;
        bool const isEscape = text[i] == '%' && i + 2 < text.size() &&
                              std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        result += isEscape ? static_cast<char>(byte) : text[i];
        if (isEscape) i += 2;
    }
    return result;
}

// The path in a file: URL of this machine, before decoding; other text as it is.
std::string_view withoutFileScheme(std::string_view url) noexcept {
    if (!url.starts_with("file:")) return url;
    url.remove_prefix(5);
    if (url.starts_with("//localhost/")) url.remove_prefix(11);
    if (url.starts_with("///")) url.remove_prefix(2);
    return url;
}

// What a caller's name may mean, in the order in which it is tried.
std::array<std::string, 3> pathsOf(std::string const& name) {
    std::string const local{withoutFileScheme(name)};
    return {name, local, decoded(local)};
}

bool isPlain(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view{"/-_.~"}.find(c) != std::string_view::npos;
}

} // namespace

LocalFile::LocalFile(std::string path, int flags) noexcept
    : path_{std::move(path)},
      descriptor_{::open(path_.c_str(), O_RDONLY | O_CLOEXEC | flags)} {
    if (descriptor_ < 0) error_ = errno;
}

LocalFile::LocalFile(LocalFile&& other) noexcept
    : path_{std::move(other.path_)},
      descriptor_{std::exchange(other.descriptor_, -1)},
      error_{other.error_} {}

LocalFile::~LocalFile() {
    if (isOpen()) ::close(descriptor_);
}

LocalFile LocalFile::regularAt(std::string path) {
    LocalFile file{std::move(path), O_NONBLOCK}; // or opening a pipe would wait for its writer

    struct stat state {};

    if (file.isOpen() && (::fstat(file.descriptor_, &state) != 0 || !S_ISREG(state.st_mode))) {
        ::close(std::exchange(file.descriptor_, -1));
        file.error_ = EINVAL;
    }
    return file;
}

// Of several errors the last one counts that says more than that nothing is there.
LocalFile LocalFile::named(std::string const& name) {
    int error = ENOENT;
    for (std::string& path : pathsOf(name)) {
        LocalFile file = at(std::move(path));
        if (file.isOpen()) return file;
        if (file.error() != ENOENT) error = file.error();
    }
    return LocalFile{error};
}

std::ptrdiff_t LocalFile::read(char* buffer, std::size_t size) noexcept {
    ssize_t count = 0;
    do {
        count = ::read(descriptor_, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

std::string canonicalPath(std::string const& name) {
    for (std::string const& path : pathsOf(name)) {
        if (::access(path.c_str(), R_OK) != 0) continue;
        std::error_code error;
        std::filesystem::path const canonical = std::filesystem::canonical(path, error);
        return error ? std::string{} : canonical.native();
    }
    return {};
}

std::optional<std::string> pathOfUrl(std::string_view url) {
    if (url.starts_with('/')) return std::string{url};
    if (!url.starts_with("file:")) return std::nullopt;
    std::string_view const local = withoutFileScheme(url);
    if (!local.starts_with('/') || local.starts_with("//")) return std::nullopt;
    std::string path = decoded(local);
    if (path.find('\0') != std::string::npos) return std::nullopt;
    return path;
}

std::string urlOf(std::string_view path) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string url = "file://";
    for (char const c : path) {
        auto const byte = static_cast<unsigned char>(c);
        if (isPlain(c)) {
            url += c;
        } else {
            url += {'%', digits[byte / 16], digits[byte % 16]};
        }
    }
    return url;
}

} // namespace tibxml::reader
