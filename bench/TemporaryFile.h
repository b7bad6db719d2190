// A file that is gone with its object.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <unistd.h>

namespace bench {

class TemporaryFile {
public:
    explicit TemporaryFile(std::string const& content) {
        int const file = mkstemp(path_.data());
        auto const size = static_cast<ssize_t>(content.size());
        bool const written = file >= 0 && ::write(file, content.data(), content.size()) == size;
        if (file >= 0) ::close(file);
        if (!written) throw std::runtime_error{"cannot write " + path_};
    }

    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;

    ~TemporaryFile() { ::unlink(path_.c_str()); }

    std::string const& path() const noexcept { return path_; }

private:
    std::string path_ = std::filesystem::temp_directory_path() / "tibxml-bench-XXXXXX";
};

} // namespace bench
