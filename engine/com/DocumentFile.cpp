#include "DocumentFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <TibXml/platform/CLibrary.h>
#include <output/Serializer.h>
#include <reader/Reader.h>
#include <tree/DocumentWriter.h>
#include <tree/Text.h>

#include "Failure.h"
#include "Sources.h"

namespace tibxml::com {

namespace {

[[noreturn]] void fail(int error, char const* what) {
    throw Failure{platform::resultFromErrno(error),
                  std::string{what} + ": " + std::generic_category().message(error)};
}

class File {
public:
    File(char const* path, int flags, mode_t mode = 0) noexcept
        : File{AT_FDCWD, path, flags, mode} {}

    // A relative path starts at the folder.
    File(int folder, char const* path, int flags, mode_t mode) noexcept
        : descriptor_{::openat(folder, path, flags | O_CLOEXEC, mode)} {}

    File(File const&) = delete;
    File& operator=(File const&) = delete;

    ~File() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }

    bool isOpen() const noexcept { return descriptor_ >= 0; }

    int descriptor() const noexcept { return descriptor_; }

    // Only some users may give files away; the group alone is more often allowed. What would run
    // as the owner or group must not do so as another one.
    void takeOwnerAndMode(struct stat const& of) const {
        bool const isOwned = ::fchown(descriptor_, of.st_uid, of.st_gid) == 0;
        if (!isOwned) std::ignore = ::fchown(descriptor_, static_cast<uid_t>(-1), of.st_gid);
        if (::fchmod(descriptor_, of.st_mode & (isOwned ? 07777U : 0777U)) != 0)
            fail(errno, "cannot keep the file's permissions");
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

// A file beside its target, under a name not in use, until it takes the target's place. Names
// are looked up from the folder, so neither they nor the path get longer than the target's own.
class TemporaryFile {
public:
    // The permissions are those of a new file of this process, or stricter.
    TemporaryFile(std::filesystem::path const& target, mode_t mode)
        : folder_{folderOf(target).c_str(), O_PATH | O_DIRECTORY},
          target_{target.filename()} {
        if (!folder_.isOpen()) fail(errno, "cannot use the folder");
        make(mode);
    }

    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;

    ~TemporaryFile() {
        if (!name_.empty()) ::unlinkat(folder_.descriptor(), name_.c_str(), 0);
    }

    File& file() noexcept { return *file_; }

    void replaceTarget() {
        int const folder = folder_.descriptor();
        if (::renameat(folder, name_.c_str(), folder, target_.c_str()) != 0)
            fail(errno, "cannot replace the file");
        name_.clear();
    }

private:
    static std::filesystem::path folderOf(std::filesystem::path const& target) {
        return target.has_parent_path() ? target.parent_path() : ".";
    }

    void make(mode_t mode) {
        for (unsigned attempt = 0;; ++attempt) {
            std::string name = ".new" + std::to_string(::getpid()) + "." + std::to_string(attempt);
            file_.emplace(folder_.descriptor(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL, mode);
            if (file_->isOpen()) {
                name_ = std::move(name);
                return;
            }
            if (errno != EEXIST || attempt == 1000) fail(errno, "cannot make a file there");
        }
    }

    File folder_;
    std::filesystem::path target_;
    std::string name_; // empty when there is no such file
    std::optional<File> file_;
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

// Only those who may read the old file may read the one that replaces it.
void replaceFile(tree::Document const& document, std::filesystem::path const& target,
                 struct stat const* old) {
    TemporaryFile temporary{target, old != nullptr ? 0600U : 0666U};
    FileSink sink{temporary.file()};
    output::writeFile(document, sink);
    if (old != nullptr) temporary.file().takeOwnerAndMode(*old);
    temporary.file().finish();
    temporary.replaceTarget();
}

void writeInPlace(tree::Document const& document, std::string const& target) {
    std::string bytes;
    output::appendFile(document, bytes);
    File const file{target.c_str(), O_WRONLY};
    if (!file.isOpen()) fail(errno, "cannot open the file");
    file.write(bytes);
}

constexpr std::array<std::string_view, 5> readable{"", "UTF-8", "UTF-16", "ISO-8859-1", "US-ASCII"};

// All characters that markup is made of, and some for which encodings change their state.
constexpr std::string_view sample =
    "\t\n !\"#$%&'()*+,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`"
    "abcdefghijklmnopqrstuvwxyz{|}~ \xC3\xA4+\xD0\x96-\xE3\x81\x82<\xEA\xB0\x80>\xE4\xB8\xAD";

tree::DocumentRef newProbe(std::string_view declaration) {
    auto probe = tree::DocumentRef::adopt(tree::Document::create());
    tree::DocumentWriter writer{*probe};
    writer.add(tree::NodeKind::declaration, probe->names().intern({}, "xml", {}), declaration);
    writer.openElement(probe->names().intern({}, "probe", {}));
    writer.add(tree::NodeKind::text, nullptr, sample);
    writer.closeElement();
    return probe;
}

bool isReadBack(std::string_view declaration) {
    std::string bytes;
    output::appendFile(*newProbe(declaration), bytes);
    auto const again = tree::DocumentRef::adopt(tree::Document::create());
    reader::ReadError error;
    std::string text;
    return reader::read(*again, std::string_view{bytes}, error) &&
           tree::stringValue(again->documentElement(), text) == sample;
}

// Throws output::EncodingError when a document with this one's XML declaration, saved in the
// encoding that it names, would not be understood by the reader: nothing of UTF-7 looks like an XML
// declaration, for one. Found out by doing so with a small document, except for encodings of which
// it is known. Throws std::bad_alloc.
void checkReadBack(tree::Document const& document) {
    std::string_view const encoding = output::declaredEncoding(document);
    if (std::find(readable.begin(), readable.end(), encoding) != readable.end()) return;
    if (isReadBack(document.node()->firstChild()->text())) return;
    throw output::EncodingError{"a document saved in the encoding " + std::string{encoding} +
                                " could not be read again"};
}

} // namespace

void saveToFile(tree::Document const& document, std::string const& path) {
    if (path.empty()) fail(ENOENT, "cannot write the file");
    checkReadBack(document);
    std::filesystem::path const target = resolved(path);

    struct stat old {};

    bool const exists = ::stat(target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) fail(EISDIR, "cannot write the file");
    if (exists && !S_ISREG(old.st_mode)) return writeInPlace(document, target.native());
    replaceFile(document, target, exists ? &old : nullptr);
}

void saveToStream(tree::Document const& document, IUnknown* object) {
    checkReadBack(document);
    // All of it before the caller's object, which may change the document, is called at all.
    std::string bytes;
    output::appendFile(document, bytes);
    ComPtr<ISequentialStream> const stream = streamOf(object);
    if (!stream) throw Failure{E_INVALIDARG, "the object is not a stream"};
    writeToStream(bytes, *stream);
}

void writeToStream(std::string_view bytes, ISequentialStream& stream) {
    StreamSink{stream}.write(bytes);
}

} // namespace tibxml::com
