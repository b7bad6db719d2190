#include <TibXml/platform/Stream.h>

#include <TibXml/platform/CLibrary.h>
#include <TibXml/platform/StreamObject.h>
#include <TibXml/platform/Utf.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using tibxml::platform::MemoryReader;
using tibxml::platform::report;
using tibxml::platform::resultFromErrno;

/// Makes a system call again for as long as a signal interrupts it.
template <class Call>
auto uninterrupted(Call call) noexcept {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// An open file, closed with the object.
class File {
public:
    explicit File(int descriptor) noexcept : descriptor_{descriptor} {}

    File(File&& other) noexcept : descriptor_{std::exchange(other.descriptor_, -1)} {}

    File(File const&) = delete;
    File& operator=(File const&) = delete;

    // Not repeated when interrupted: the descriptor is free already and may be in use again.
    ~File() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }

    int descriptor() const noexcept { return descriptor_; }

private:
    int descriptor_;
};

constexpr DWORD accessBits = STGM_WRITE | STGM_READWRITE;

FILETIME fileTime(timespec const& time) noexcept {
    constexpr LONGLONG secondsFrom1601To1970 = 11644473600;
    auto const seconds = static_cast<LONGLONG>(time.tv_sec) + secondsFrom1601To1970;
    auto const ticks = static_cast<ULONGLONG>(seconds * 10'000'000 + time.tv_nsec / 100);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

bool fitsOffset(ULONGLONG size) noexcept {
    return size <= static_cast<ULONGLONG>(std::numeric_limits<off_t>::max());
}

class FileStream final : public tibxml::platform::StreamObject {
public:
    FileStream(File file, DWORD access) noexcept : file_{std::move(file)}, access_{access} {}

    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept override {
        report(done, 0);
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        if (access_ == STGM_WRITE) return STG_E_ACCESSDENIED;
        ULONG got = 0;
        while (got < count) {
            auto const some = uninterrupted([&] {
                return ::read(file_.descriptor(), static_cast<BYTE*>(buffer) + got, count - got);
            });
            if (some < 0) return resultFromErrno(errno);
            if (some == 0) return S_FALSE;
            got += static_cast<ULONG>(some);
            report(done, got);
        }
        return S_OK;
    }

    HRESULT Write(void const* buffer, ULONG count, ULONG* done) noexcept override {
        report(done, 0);
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        if (access_ == STGM_READ) return STG_E_ACCESSDENIED;
        ULONG put = 0;
        while (put < count) {
            auto const some = uninterrupted([&] {
                return ::write(file_.descriptor(), static_cast<BYTE const*>(buffer) + put,
                               count - put);
            });
            if (some < 0) return resultFromErrno(errno);
            put += static_cast<ULONG>(some);
            report(done, put);
        }
        return S_OK;
    }

    HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) noexcept override {
        static_assert(STREAM_SEEK_SET == SEEK_SET && STREAM_SEEK_CUR == SEEK_CUR &&
                      STREAM_SEEK_END == SEEK_END);
        if (origin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
        auto const moved = ::lseek(file_.descriptor(), move.QuadPart, static_cast<int>(origin));
        if (moved < 0) return STG_E_INVALIDFUNCTION;
        report(position, static_cast<ULONGLONG>(moved));
        return S_OK;
    }

    HRESULT SetSize(ULARGE_INTEGER size) noexcept override {
        if (access_ == STGM_READ) return STG_E_ACCESSDENIED;
        if (!fitsOffset(size.QuadPart)) return STG_E_MEDIUMFULL;
        auto const length = static_cast<off_t>(size.QuadPart);
        auto const cut = uninterrupted([&] { return ::ftruncate(file_.descriptor(), length); });
        return cut < 0 ? resultFromErrno(errno) : S_OK;
    }

    HRESULT Stat(STATSTG* status, DWORD /*flags*/) noexcept override {
        if (status == nullptr) return STG_E_INVALIDPOINTER;
        *status = {};

        struct stat found {};

        if (::fstat(file_.descriptor(), &found) < 0) return resultFromErrno(errno);
        status->type = STGTY_STREAM;
        status->cbSize.QuadPart = static_cast<ULONGLONG>(found.st_size);
        status->mtime = fileTime(found.st_mtim);
        status->ctime = fileTime(found.st_ctim);
        status->atime = fileTime(found.st_atim);
        status->grfMode = access_;
        return S_OK;
    }

    /// Two positions in one file would need two openings of it, and the file may have gone.
    HRESULT Clone(IStream** clone) noexcept override {
        if (clone == nullptr) return STG_E_INVALIDPOINTER;
        *clone = nullptr;
        return E_NOTIMPL;
    }

private:
    File file_;
    DWORD access_;
};

/// An emptied file is opened for writing even when only reading is allowed afterwards, because
/// emptying is writing.
int openFlags(DWORD mode) noexcept {
    auto const access = mode & accessBits;
    auto const creates = (mode & STGM_CREATE) != 0;
    auto const flags = O_CLOEXEC | (creates ? O_CREAT | O_TRUNC : 0);
    if (access == STGM_WRITE) return flags | O_WRONLY;
    return flags | (access == STGM_READWRITE || creates ? O_RDWR : O_RDONLY);
}

bool isMode(DWORD mode) noexcept {
    constexpr DWORD sharing = STGM_SHARE_EXCLUSIVE | STGM_SHARE_DENY_WRITE | STGM_SHARE_DENY_NONE;
    return (mode & ~(accessBits | sharing | STGM_CREATE)) == 0 && (mode & accessBits) != accessBits;
}

HRESULT open(std::string const& path, DWORD mode, IStream** stream) noexcept {
    File file{uninterrupted([&] { return ::open(path.c_str(), openFlags(mode), 0666); })};

    struct stat found {};

    if (file.descriptor() < 0 || ::fstat(file.descriptor(), &found) < 0)
        return resultFromErrno(errno);
    if (S_ISDIR(found.st_mode)) return resultFromErrno(EISDIR);
    *stream = new (std::nothrow) FileStream{std::move(file), mode & accessBits};
    return *stream == nullptr ? E_OUTOFMEMORY : S_OK;
}

/// Bytes that clones have in common, and that grow with what is written.
class MemoryStream final : public MemoryReader {
public:
    MemoryStream(std::shared_ptr<std::vector<BYTE>> bytes, ULONGLONG position) noexcept
        : MemoryReader{position, STGM_READWRITE},
          bytes_{std::move(bytes)} {}

    HRESULT Write(void const* buffer, ULONG count, ULONG* done) noexcept override {
        report(done, 0);
        if (buffer == nullptr) return STG_E_INVALIDPOINTER;
        if (count == 0) return S_OK;
        if (position() > longest) return STG_E_MEDIUMFULL;
        auto const resized = resize(std::max<ULONGLONG>(bytes_->size(), position() + count));
        if (FAILED(resized)) return resized;
        std::memcpy(bytes_->data() + position(), buffer, count);
        advance(count);
        report(done, count);
        return S_OK;
    }

    HRESULT SetSize(ULARGE_INTEGER size) noexcept override { return resize(size.QuadPart); }

    HRESULT Clone(IStream** clone) noexcept override {
        if (clone == nullptr) return STG_E_INVALIDPOINTER;
        *clone = new (std::nothrow) MemoryStream{bytes_, position()};
        return *clone == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    static constexpr auto longest = static_cast<ULONGLONG>(std::numeric_limits<LONGLONG>::max()) -
                                    std::numeric_limits<ULONG>::max();

    std::span<BYTE const> bytes() const noexcept override { return *bytes_; }

    HRESULT resize(ULONGLONG size) noexcept {
        try {
            bytes_->resize(size);
            return S_OK;
        } catch (std::bad_alloc const&) {
            return E_OUTOFMEMORY;
        } catch (std::length_error const&) {
            return STG_E_MEDIUMFULL;
        }
    }

    std::shared_ptr<std::vector<BYTE>> bytes_;
};

} // namespace

HRESULT SHCreateStreamOnFileW(wchar_t const* path, DWORD mode, IStream** stream) noexcept {
    if (stream == nullptr) return E_INVALIDARG;
    *stream = nullptr;
    if (path == nullptr || !isMode(mode)) return E_INVALIDARG;
    try {
        std::string name;
        if (!tibxml::platform::appendUtf8(name, path)) return E_INVALIDARG;
        return open(name, mode, stream);
    } catch (std::bad_alloc const&) {
        return E_OUTOFMEMORY;
    }
}

IStream* SHCreateMemStream(BYTE const* bytes, UINT count) noexcept {
    try {
        auto content = std::make_shared<std::vector<BYTE>>();
        if (bytes != nullptr) content->assign(bytes, bytes + count);
        return new MemoryStream{std::move(content), 0};
    } catch (std::bad_alloc const&) {
        return nullptr;
    }
}
