#pragma once

#include <TibXml/platform/Export.h>
#include <TibXml/platform/IUnknown.h>

inline constexpr IID IID_ISequentialStream{
    0x0c733a30, 0x2a1c, 0x11ce, {0xad, 0xe5, 0x00, 0xaa, 0x00, 0x44, 0x77, 0x3d}};
inline constexpr IID IID_IStream{
    0x0000000c, 0x0000, 0x0000, {0xc0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};

/// A point in time, in steps of 100 ns since the year 1601.
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

/// What `IStream::Stat` says about a stream. The streams made here have no name to give, so
/// nothing in it has to be freed.
struct STATSTG {
    WCHAR* pwcsName;
    DWORD type; ///< `STGTY_STREAM`
    ULARGE_INTEGER cbSize;
    FILETIME mtime;
    FILETIME ctime;
    FILETIME atime;
    DWORD grfMode; ///< the `STGM_` access that the stream was made with
    DWORD grfLocksSupported;
    CLSID clsid;
    DWORD grfStateBits;
    DWORD reserved;
};

inline constexpr DWORD STGTY_STREAM = 2;
inline constexpr DWORD STATFLAG_DEFAULT = 0;
inline constexpr DWORD STATFLAG_NONAME = 1;
inline constexpr DWORD STGC_DEFAULT = 0;

inline constexpr DWORD STREAM_SEEK_SET = 0;
inline constexpr DWORD STREAM_SEEK_CUR = 1;
inline constexpr DWORD STREAM_SEEK_END = 2;

inline constexpr DWORD STGM_READ = 0x0;
inline constexpr DWORD STGM_WRITE = 0x1;
inline constexpr DWORD STGM_READWRITE = 0x2;
inline constexpr DWORD STGM_SHARE_EXCLUSIVE = 0x10; ///< sharing is not controlled here
inline constexpr DWORD STGM_SHARE_DENY_WRITE = 0x20;
inline constexpr DWORD STGM_SHARE_DENY_NONE = 0x40;
inline constexpr DWORD STGM_CREATE = 0x1000; ///< make the file, or empty the one that is there

class ISequentialStream : public IUnknown {
public:
    /// Reads up to `count` bytes. `S_OK` when it got them all, `S_FALSE` when the end came first;
    /// `*done`, unless null, is how many came. After a failure it is how many came before.
    virtual HRESULT Read(void* buffer, ULONG count, ULONG* done) = 0;
    /// Writes `count` bytes; `*done`, unless null, is how many were written, fewer after a failure.
    virtual HRESULT Write(void const* buffer, ULONG count, ULONG* done) = 0;

protected:
    ~ISequentialStream() = default;
};

/// Bytes with a position.
class IStream : public ISequentialStream {
public:
    /// Moves the position by `move` from the start, the position or the end; `*position`, unless
    /// null, is the new one. A position beyond the end is fine, one before the start is
    /// `STG_E_INVALIDFUNCTION` and nothing moves.
    virtual HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) = 0;
    /// Cuts the bytes off or adds zeros.
    virtual HRESULT SetSize(ULARGE_INTEGER size) = 0;
    /// Copies up to `count` bytes from here to another stream. What that stream's `Write` throws is
    /// answered as a code: `E_OUTOFMEMORY` for `std::bad_alloc`, `STG_E_WRITEFAULT` for the rest.
    virtual HRESULT CopyTo(IStream* target, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                           ULARGE_INTEGER* written) = 0;
    virtual HRESULT Commit(DWORD flags) = 0;
    virtual HRESULT Revert() = 0;
    virtual HRESULT LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) = 0;
    virtual HRESULT UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) = 0;
    virtual HRESULT Stat(STATSTG* status, DWORD flags) = 0;
    /// Another stream over the same bytes, with a position of its own that starts here.
    virtual HRESULT Clone(IStream** clone) = 0;

protected:
    ~IStream() = default;
};

template <>
struct tibxml::platform::InterfaceTraits<ISequentialStream>
    : InterfaceIs<IID_ISequentialStream, IUnknown> {};

template <>
struct tibxml::platform::InterfaceTraits<IStream> : InterfaceIs<IID_IStream, ISequentialStream> {};

/// A new stream in memory with a copy of `count` bytes, positioned at the start; `bytes` may be
/// null for an empty one. The caller releases it. Null when memory is exhausted.
TIBXML_API IStream* SHCreateMemStream(BYTE const* bytes, UINT count) noexcept;

/// Opens a file as a stream, positioned at the start; the caller releases it, which closes the
/// file. Without `STGM_CREATE` the file has to be there. Every read and write goes straight to the
/// file.
/// `*stream` is null after any failure: 0x80070002 when there is no such file or folder, 0x80070003
/// when a part of the path is not a folder, 0x80070005 when it may not be opened so or is a folder,
/// and other codes of the system; `E_INVALIDARG` when a pointer is null, the path is not Unicode or
/// the mode is none.
TIBXML_API HRESULT SHCreateStreamOnFileW(wchar_t const* path, DWORD mode,
                                         IStream** stream) noexcept;
