// Files of this machine: from the names that callers, schemas and stylesheets have for them to an
// open file.
//
// A name is a path, or a `file:` URL of this machine, in which %XX stands for a byte. Callers write
// them in each other's form: "a%20b.xml" may be the name of a file, or that of "a b.xml". So their
// names are tried in turn: as a path, as a URL, then with %XX decoded. Schemas and stylesheets have
// URLs, which are read strictly; any other kind of URL means no file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include <reader/Input.h>

namespace tibxml::reader {

/// A file that is open for reading, if it could be opened.
class LocalFile final : public ByteSource {
public:
    /// The path as it is.
    static LocalFile at(std::string path) { return LocalFile{std::move(path), 0}; }

    /// The same for a regular file only: a device or a pipe may never end.
    static LocalFile regularAt(std::string path);

    /// The first file that a name of a caller's means and that can be opened. Throws
    /// std::bad_alloc.
    static LocalFile named(std::string const& name);

    LocalFile(LocalFile&& other) noexcept;
    LocalFile& operator=(LocalFile&&) = delete;
    ~LocalFile();

    bool isOpen() const noexcept { return descriptor_ >= 0; }

    /// Why it is not open, as errno has it.
    int error() const noexcept { return error_; }

    /// With which it was opened.
    std::string const& path() const noexcept { return path_; }

    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override;

private:
    LocalFile(std::string path, int flags) noexcept;

    explicit LocalFile(int error) noexcept : descriptor_{-1}, error_{error} {}

    std::string path_;
    int descriptor_;
    int error_ = 0;
};

/// The one path, absolute and without links, of the first file that a name of a caller's means and
/// that may be read; empty if there is none. Throws std::bad_alloc.
std::string canonicalPath(std::string const& name);

/// The absolute path that an absolute path or a `file:` URL of this machine means; none for any
/// other URL. Throws std::bad_alloc.
std::optional<std::string> pathOfUrl(std::string_view url);

/// The URL of an absolute path. Throws std::bad_alloc.
std::string urlOf(std::string_view path);

} // namespace tibxml::reader
