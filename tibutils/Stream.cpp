#include <TibXml/tibutils/Stream.h>

#include <limits>
#include <new>
#include <stdexcept>
#include <utility>

#include <TibXml/platform/StreamObject.h>

namespace TibUtils {
namespace {

// Takes over the one reference that a new stream comes with.
Stream adopted(IStream* stream) noexcept {
    Stream holder(stream);
    if (stream != nullptr) {
        stream->Release();
    }
    return holder;
}

// The same for a stream that is missing only when memory is.
Stream made(IStream* stream) {
    if (stream == nullptr) {
        throw std::bad_alloc();
    }
    return adopted(stream);
}

} // namespace

Stream::Stream(IStream* stream) noexcept : stream_(stream) {
    if (stream_ != nullptr) {
        stream_->AddRef();
    }
}

Stream Stream::FromMemory(void const* bytes, std::size_t size) {
    if (size > std::numeric_limits<UINT>::max()) {
        throw std::length_error("TibUtils::Stream");
    }
    return made(SHCreateMemStream(static_cast<BYTE const*>(bytes), static_cast<UINT>(size)));
}

Stream Stream::OverMemory(void const* bytes, std::size_t size) {
    return made(tibxml::platform::borrowedStream(bytes, size));
}

Stream Stream::FromFile(wchar_t const* path) {
    IStream* stream = nullptr;
    if (SHCreateStreamOnFileW(path, STGM_READ | STGM_SHARE_DENY_WRITE, &stream) == E_OUTOFMEMORY) {
        throw std::bad_alloc();
    }
    return adopted(stream);
}

Stream::Stream(Stream const& other) noexcept : Stream(other.stream_) {}

Stream::Stream(Stream&& other) noexcept : stream_(std::exchange(other.stream_, nullptr)) {}

Stream& Stream::operator=(Stream other) noexcept {
    std::swap(stream_, other.stream_);
    return *this;
}

Stream::~Stream() {
    if (stream_ != nullptr) {
        stream_->Release();
    }
}

} // namespace TibUtils
