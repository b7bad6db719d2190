#pragma once

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>

#include <TibXml/platform/Stream.h>
#include <TibXml/platform/WindowsTypes.h>

namespace tibxml::tool {

/// The bytes of a file, or of the standard input for the name "-", for the engine to read. The
/// engine takes a file that it cannot read for a document that is not well-formed; this one knows
/// the difference.
///
/// It belongs to its maker, who keeps it until the engine has let go of it.
class InputFile final : public IStream {
public:
    /// Throws `Failure` when the file cannot be opened.
    explicit InputFile(std::string name);

    InputFile(InputFile const&) = delete;
    InputFile& operator=(InputFile const&) = delete;
    ~InputFile();

    /// Throws `Failure` when reading has failed since.
    void requireSuccess() const;

    HRESULT QueryInterface(REFIID iid, void** object) noexcept override;
    ULONG AddRef() noexcept override;
    ULONG Release() noexcept override;
    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept override;
    HRESULT Write(void const* buffer, ULONG count, ULONG* done) noexcept override;

    // It can be read from its beginning to its end and nothing else.
    HRESULT Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) noexcept override { return E_NOTIMPL; }

    HRESULT SetSize(ULARGE_INTEGER) noexcept override { return E_NOTIMPL; }

    HRESULT CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT Commit(DWORD) noexcept override { return E_NOTIMPL; }

    HRESULT Revert() noexcept override { return E_NOTIMPL; }

    HRESULT LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) noexcept override {
        return E_NOTIMPL;
    }

    HRESULT Stat(STATSTG*, DWORD) noexcept override { return E_NOTIMPL; }

    HRESULT Clone(IStream**) noexcept override { return E_NOTIMPL; }

    /// How many bytes were read so far.
    std::uint64_t position() const noexcept { return position_; }

    /// Called before each reading. It must not throw.
    std::function<void()> beforeRead;

private:
    std::string name_;
    std::FILE* file_;
    ULONG references_ = 1;
    int error_ = 0;
    std::uint64_t position_ = 0;
};

} // namespace tibxml::tool
