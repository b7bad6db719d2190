#pragma once

#include <TibXml/platform/Export.h>
#include <TibXml/platform/Stream.h>

#include <cstddef>

namespace TibUtils {

/// Something to read from: a value that holds one platform stream, or none. Copies share the stream
/// and with it the position; the last one that goes releases it.
///
/// Threads: a stream belongs to one thread at a time, and copies share it.
class TIBXML_API Stream {
public:
    /// No stream.
    Stream() noexcept = default;

    /// Shares a stream that there is already, at the position where it is; the caller's own
    /// reference stays the caller's. Null is not a stream.
    explicit Stream(IStream* stream) noexcept;

    /// A stream over a copy of `size` bytes, from the first one on. `bytes` may be null when `size`
    /// is 0. Throws `std::bad_alloc`, and `std::length_error` for 4 GiB and more.
    static Stream FromMemory(void const* bytes, std::size_t size);

    /// A stream that reads `size` bytes where they are, without copying them: the quick way to load
    /// what is in memory already. They must stay as they are while anything refers to the stream,
    /// which cannot be written to. `bytes` may be null when `size` is 0. Throws `std::bad_alloc`.
    static Stream OverMemory(void const* bytes, std::size_t size);

    /// A stream that reads the file at `path` from the start. No stream when the file cannot be
    /// opened or `path` is null. Throws `std::bad_alloc`.
    static Stream FromFile(wchar_t const* path);

    Stream(Stream const& other) noexcept;
    /// The other one holds no stream afterwards.
    Stream(Stream&& other) noexcept;
    Stream& operator=(Stream other) noexcept;
    ~Stream();

    /// The stream, null when there is none. It stays this object's: good as long as it (or a copy)
    /// lives, and code that needs it longer adds a reference.
    operator IStream*() const noexcept { return stream_; }

private:
    IStream* stream_ = nullptr;
};

} // namespace TibUtils
