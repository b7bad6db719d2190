#include "LocalFiles.h"

#include <cerrno>
#include <charconv>
#include <cstdint>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tibxml::transform {

namespace {

bool isPlain(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           std::string_view{"/-_.~"}.find(c) != std::string_view::npos;
}

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

int descriptorOf(void* context) noexcept {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(context));
}

int readFile(void* context, char* buffer, int size) noexcept {
    ssize_t count = 0;
    do {
        count = ::read(descriptorOf(context), buffer, static_cast<std::size_t>(size));
    } while (count < 0 && errno == EINTR);
    return static_cast<int>(count);
}

int closeFile(void* context) noexcept {
    return ::close(descriptorOf(context));
}

// Not a device or a pipe, which may never end.
bool isRegularFile(int file) noexcept {
    struct stat state {};

    return ::fstat(file, &state) == 0 && S_ISREG(state.st_mode);
}

xmlParserInputBuffer* openPath(std::string const& path, xmlCharEncoding encoding) noexcept {
    int const file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) return nullptr;
    xmlParserInputBuffer* const buffer =
        isRegularFile(file)
            ? xmlParserInputBufferCreateIO(
                  readFile, closeFile,
                  // NOLINTNEXTLINE(performance-no-int-to-ptr): a context of libxml2 is a pointer
                  reinterpret_cast<void*>(static_cast<std::intptr_t>(file)), encoding)
            : nullptr;
    if (buffer == nullptr) ::close(file);
    return buffer;
}

} // namespace

xmlParserInputBuffer* openLocalFile(char const* url, xmlCharEncoding encoding) noexcept {
    try {
        std::optional<std::string> const path = localPath(url);
        return path ? openPath(*path, encoding) : nullptr;
    } catch (...) {
        return nullptr; // what cannot be opened is missing
    }
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

std::optional<std::string> localPath(std::string_view url) {
    if (url.starts_with('/')) return std::string{url};
    if (!url.starts_with("file:")) return std::nullopt;
    url.remove_prefix(5);
    if (url.starts_with("//localhost/")) url.remove_prefix(11);
    if (url.starts_with("///")) url.remove_prefix(2);
    if (!url.starts_with('/') || url.starts_with("//")) return std::nullopt;
    std::string path = decoded(url);
    if (path.find('\0') != std::string::npos) return std::nullopt;
    return path;
}

} // namespace tibxml::transform
