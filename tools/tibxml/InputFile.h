#pragma once

#include <cstdio>
#include <string>

#include <TibXml/platform/Stream.h>

namespace tibxml::tool {

/// The bytes of a file, or of the standard input for the name "-", for the engine to read. The
/// engine takes a file that it cannot read for a document that is not well-formed; this one knows
/// the difference.
///
/// It belongs to whoever makes it, who keeps it until the engine has let go of it.
class InputFile final : public ISequentialStream {
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

private:
    std::string name_;
    std::FILE* file_;
    ULONG references_ = 1;
    int error_ = 0;
};

} // namespace tibxml::tool
