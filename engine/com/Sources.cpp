#include "Sources.h"

#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include <TibXml/platform/StreamObject.h>
#include <TibXml/platform/Utf.h>
#include <reader/LocalFile.h>

#include "Text.h"

namespace tibxml::com {

namespace {

class StreamSource final : public reader::ByteSource {
public:
    explicit StreamSource(ISequentialStream* stream) noexcept : stream_{stream} {}

    // An exception is kept for rethrow() and counts as a failure until then.
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

// What is left in a stream of ours over memory, which is then at its end; nothing when it is
// another one. Throws what the stream throws.
std::optional<std::string_view> bytesOf(ISequentialStream* stream) {
    void* found = nullptr;
    if (FAILED(stream->QueryInterface(platform::IID_IMemoryBytes, &found))) return {};
    auto const memory =
        ComPtr<platform::IMemoryBytes>::adopt(static_cast<platform::IMemoryBytes*>(found));
    BYTE const* bytes = nullptr;
    std::size_t size = 0;
    if (memory->TakeRest(&bytes, &size) != S_OK) return {};
    return std::string_view{reinterpret_cast<char const*>(bytes), size};
}

bool fail(reader::ReadError& error, std::string reason) {
    error = {};
    error.code = reader::errorSource;
    error.reason = std::move(reason);
    return false;
}

// Empty if the working directory is gone.
std::string absolutePath(std::string const& path) {
    std::error_code error;
    return std::filesystem::absolute(path, error).lexically_normal().native();
}

} // namespace

bool isSource(VARIANT const& source) noexcept {
    return source.vt == VT_BSTR || source.vt == VT_UNKNOWN || source.vt == VT_DISPATCH;
}

IUnknown* objectIn(VARIANT const& value) noexcept {
    return value.vt == VT_UNKNOWN || value.vt == VT_DISPATCH ? value.punkVal : nullptr;
}

std::string pathOf(BSTR text) {
    std::string path;
    std::wstring_view const wide = viewOf(text);
    if (wide.find(L'\0') != std::wstring_view::npos || !platform::appendUtf8(path, wide)) return {};
    return path;
}

ComPtr<ISequentialStream> streamOf(IUnknown* object) {
    void* stream = nullptr;
    if (object == nullptr) return {};
    if (FAILED(object->QueryInterface(IID_ISequentialStream, &stream)) &&
        FAILED(object->QueryInterface(IID_IStream, &stream)))
        return {};
    return ComPtr<ISequentialStream>::adopt(static_cast<ISequentialStream*>(stream));
}

reader::Input inputOf(BSTR text) noexcept {
    std::wstring_view const wide = viewOf(text);
    return wide.substr(0, wide.find(L'\0'));
}

bool readFile(std::string const& name, std::string& location, reader::ReadError& error,
              Reading const& read) {
    reader::LocalFile file = reader::LocalFile::named(name);
    if (!file.isOpen()) {
        return fail(error,
                    "cannot open the file: " + std::generic_category().message(file.error()));
    }
    location = absolutePath(file.path());
    return read(file);
}

bool readStream(IUnknown* object, reader::ReadError& error, Reading const& read) {
    ComPtr<ISequentialStream> const stream = streamOf(object);
    if (!stream) return fail(error, "the object is not a stream");
    if (auto const bytes = bytesOf(stream.get())) return read(*bytes);
    StreamSource source{stream.get()};
    bool const isDone = read(source);
    source.rethrow();
    return isDone;
}

} // namespace tibxml::com
