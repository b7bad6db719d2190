#include "DocumentFile.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <TibXml/platform/ErrnoResult.h>
#include <output/Serializer.h>

#include "Failure.h"
#include "StreamOf.h"

namespace tibxml::com {

namespace {

[[noreturn]] void fail(int error, char const* what) {
    throw Failure{platform::resultFromErrno(error),
                  std::string{what} + ": " + std::generic_category().message(error)};
}

class File {
public:
    File(char const* path, int flags, mode_t mode) noexcept
        : descriptor_{::open(path, flags | O_CLOEXEC, mode)} {}

    File(File const&) = delete;
    File& operator=(File const&) = delete;

    ~File() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }

    bool isOpen() const noexcept { return descriptor_ >= 0; }

    void setMode(mode_t mode) const {
        if (::fchmod(descriptor_, mode) != 0) fail(errno, "cannot keep the file's permissions");
    }

    void write(std::string_view bytes) const {
        while (!bytes.empty()) {
            ssize_t const done = ::write(descriptor_, bytes.data(), bytes.size());
            if (done >= 0) {
                bytes.remove_prefix(static_cast<std::size_t>(done));
            } else if (errno != EINTR) {
                fail(errno, "cannot write the file");
            }
        }
    }

    // The content is on the disk afterwards, so that a rename never shows a name without content.
    void finish() {
        if (::fsync(descriptor_) != 0) fail(errno, "cannot write the file");
        if (::close(std::exchange(descriptor_, -1)) != 0) fail(errno, "cannot write the file");
    }

private:
    int descriptor_;
};

class FileSink final : public output::Sink {
public:
    explicit FileSink(File const& file) noexcept : file_{file} {}

    void write(std::string_view piece) override { file_.write(piece); }

private:
    File const& file_;
};

class StreamSink final : public output::Sink {
public:
    explicit StreamSink(ISequentialStream& stream) noexcept : stream_{stream} {}

    void write(std::string_view piece) override {
        while (!piece.empty()) {
            auto const count = static_cast<ULONG>(std::min<std::size_t>(piece.size(), 1U << 30));
            ULONG done = 0;
            HRESULT const result = stream_.Write(piece.data(), count, &done);
            if (FAILED(result)) throw Failure{result, "the stream refused to be written"};
            if (done == 0 || done > count) throw Failure{E_FAIL, "the stream took nothing"};
            piece.remove_prefix(done);
        }
    }

private:
    ISequentialStream& stream_;
};

// A file beside its target, under a name that nobody has, until it takes the target's place.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string const& target) : path_{unusedName(target)} {}

    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;

    ~TemporaryFile() {
        if (!path_.empty()) ::unlink(path_.c_str());
    }

    File open() const { return File{path_.c_str(), O_WRONLY | O_TRUNC, 0}; }

    void replace(std::string const& target) {
        if (::rename(path_.c_str(), target.c_str()) != 0) fail(errno, "cannot replace the file");
        path_.clear();
    }

private:
    // The file is made with the permissions of a new file of this process.
    static std::string unusedName(std::string const& target) {
        for (unsigned attempt = 0;; ++attempt) {
            std::string name =
                target + ".new" + std::to_string(::getpid()) + "." + std::to_string(attempt);
            File const file{name.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666};
            if (file.isOpen()) return name;
            if (errno != EEXIST || attempt == 1000) fail(errno, "cannot make a file there");
        }
    }

    std::string path_;
};

// The file that a path means in the end, which need not be there yet, so that a link is followed
// and not replaced.
std::filesystem::path resolved(std::filesystem::path path) {
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int links = 0; std::filesystem::is_symlink(path, error); ++links) {
        std::filesystem::path const next = std::filesystem::read_symlink(path, error);
        if (error || links == mostLinks) fail(ELOOP, "cannot follow the link");
        path = path.parent_path() / next;
    }
    return path;
}

void replaceFile(tree::Document const& document, std::string const& target,
                 struct stat const* old) {
    TemporaryFile temporary{target};
    File file = temporary.open();
    if (!file.isOpen()) fail(errno, "cannot write the file");
    FileSink sink{file};
    output::writeFile(document, sink);
    if (old != nullptr) file.setMode(old->st_mode & 07777U);
    file.finish();
    temporary.replace(target);
}

void writeInPlace(tree::Document const& document, std::string const& target) {
    std::string bytes;
    output::appendFile(document, bytes);
    File const file{target.c_str(), O_WRONLY, 0};
    if (!file.isOpen()) fail(errno, "cannot open the file");
    file.write(bytes);
}

} // namespace

void saveToFile(tree::Document const& document, std::string const& path) {
    if (path.empty()) fail(ENOENT, "cannot write the file");
    std::string const target = resolved(path).native();

    struct stat old {};

    bool const exists = ::stat(target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) fail(EISDIR, "cannot write the file");
    if (exists && !S_ISREG(old.st_mode)) return writeInPlace(document, target);
    replaceFile(document, target, exists ? &old : nullptr);
}

void saveToStream(tree::Document const& document, IUnknown* object) {
    // All of it before the caller's object, which may change the document, is called at all.
    std::string bytes;
    output::appendFile(document, bytes);
    ComPtr<ISequentialStream> const stream = streamOf(object);
    if (!stream) throw Failure{E_INVALIDARG, "the object is not a stream"};
    StreamSink{*stream}.write(bytes);
}

} // namespace tibxml::com
