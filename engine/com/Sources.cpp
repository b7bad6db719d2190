#include "Sources.h"

#include <cerrno>
#include <charconv>
#include <exception>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include <TibXml/platform/Utf.h>

#include "StreamOf.h"
#include "Text.h"

namespace tibxml::com {

namespace {

class FileSource final : public reader::ByteSource {
public:
    explicit FileSource(char const* path) noexcept : file_{::open(path, O_RDONLY | O_CLOEXEC)} {}

    FileSource(FileSource const&) = delete;
    FileSource& operator=(FileSource const&) = delete;

    ~FileSource() {
        if (file_ >= 0) ::close(file_);
    }

    bool isOpen() const noexcept { return file_ >= 0; }

    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override {
        ssize_t count = 0;
        do {
            count = ::read(file_, buffer, size);
        } while (count < 0 && errno == EINTR);
        return count;
    }

private:
    int file_;
};

class StreamSource final : public reader::ByteSource {
public:
    explicit StreamSource(ISequentialStream* stream) noexcept : stream_{stream} {}

    // The parser's C frames call this, through which no exception may pass: one is kept and counts
    // as a failure.
    std::ptrdiff_t read(char* buffer, std::size_t size) noexcept override {
        try {
            ULONG done = 0;
            HRESULT const result = stream_->Read(buffer, static_cast<ULONG>(size), &done);
            return FAILED(result) || done > size ? -1 : static_cast<std::ptrdiff_t>(done);
        } catch (...) {
            exception_ = std::current_exception();
            return -1;
        }
    }

    // Throws what the stream has thrown.
    void rethrow() const {
        if (exception_) std::rethrow_exception(exception_);
    }

private:
    ISequentialStream* stream_;
    std::exception_ptr exception_;
};

bool fail(reader::ReadError& error, std::string reason) {
    error = {};
    error.code = reader::errorSource;
    error.reason = std::move(reason);
    return false;
}

std::string decodePercents(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte = 0;
        char const* const digits = text.data() + i + 1;
        bool const isEscape = text[i] == '%' && i + 2 < text.size() &&
                              std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        decoded += isEscape ? static_cast<char>(byte) : text[i];
        if (isEscape) i += 2;
    }
    return decoded;
}

// The path in a file: URL of this machine; other text as it is.
std::string_view withoutFileScheme(std::string_view path) noexcept {
    if (!path.starts_with("file:")) return path;
    path.remove_prefix(5);
    if (path.starts_with("//localhost/")) path.remove_prefix(11);
    if (path.starts_with("///")) path.remove_prefix(2);
    return path;
}

// Empty when the working directory is gone.
std::string absolutePath(std::string const& path) {
    std::error_code error;
    return std::filesystem::absolute(path, error).lexically_normal().native();
}

} // namespace

bool isSource(VARIANT const& source) noexcept {
    return source.vt == VT_BSTR || source.vt == VT_UNKNOWN || source.vt == VT_DISPATCH;
}

std::string pathOf(BSTR text) {
    std::string path;
    std::wstring_view const wide = viewOf(text);
    if (wide.find(L'\0') != std::wstring_view::npos || !platform::appendUtf8(path, wide)) return {};
    return path;
}

bool readFile(SourceReader& reader, std::string const& path, std::string& location,
              reader::ReadError& error) {
    int reason = ENOENT;
    std::string const local{withoutFileScheme(path)};
    for (std::string const& candidate : {path, local, decodePercents(local)}) {
        FileSource source{candidate.c_str()};
        if (source.isOpen()) {
            location = absolutePath(candidate);
            return reader.readBytes(source, error);
        }
        if (errno != ENOENT) reason = errno;
    }
    return fail(error, "cannot open the file: " + std::generic_category().message(reason));
}

std::string existingFile(std::string const& path) {
    std::string const local{withoutFileScheme(path)};
    for (std::string const& candidate : {path, local, decodePercents(local)})
        if (::access(candidate.c_str(), R_OK) == 0) return candidate;
    return {};
}

bool useFile(std::string const& path, std::function<void(reader::ByteSource&)> const& use) {
    FileSource source{path.c_str()};
    if (source.isOpen()) use(source);
    return source.isOpen();
}

bool readStream(SourceReader& reader, IUnknown* object, reader::ReadError& error) {
    ComPtr<ISequentialStream> const stream = streamOf(object);
    if (!stream) return fail(error, "the object is not a stream");
    StreamSource source{stream.get()};
    bool const done = reader.readBytes(source, error);
    source.rethrow();
    return done;
}

bool readWide(SourceReader& reader, BSTR text, reader::ReadError& error) {
    std::wstring_view wide = viewOf(text);
    wide = wide.substr(0, wide.find(L'\0'));
    return reader.readText(wide, error);
}

} // namespace tibxml::com
