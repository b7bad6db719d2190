#include "InputFile.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "Failure.h"

namespace tibxml::tool {

namespace {

Failure unreadable(std::string const& name, int reason) {
    return failure(ExitStatus::failed,
                   name + ": cannot be read: " + std::generic_category().message(reason));
}

} // namespace

InputFile::InputFile(std::string name)
    : name_{std::move(name)},
      file_{name_ == "-" ? stdin : std::fopen(name_.c_str(), "rb")} {
    if (file_ == nullptr) throw unreadable(name_, errno);
}

InputFile::~InputFile() {
    if (file_ != stdin) std::fclose(file_);
}

void InputFile::requireSuccess() const {
    if (error_ != 0) throw unreadable(name_, error_);
}

HRESULT InputFile::QueryInterface(REFIID iid, void** object) noexcept {
    if (object == nullptr) return E_POINTER;
    bool const isOffered =
        iid == IID_IStream || iid == IID_ISequentialStream || iid == IID_IUnknown;
    *object = isOffered ? static_cast<IStream*>(this) : nullptr;
    if (!isOffered) return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG InputFile::AddRef() noexcept {
    return ++references_;
}

ULONG InputFile::Release() noexcept {
    return --references_;
}

HRESULT InputFile::Read(void* buffer, ULONG count, ULONG* done) noexcept {
    if (beforeRead) beforeRead();
    std::size_t const got = std::fread(buffer, 1, count, file_);
    position_ += got;
    bool const isFailure = got < count && std::ferror(file_) != 0;
    if (isFailure) error_ = errno;
    if (done != nullptr) *done = static_cast<ULONG>(got);
    if (isFailure) return E_FAIL;
    return got < count ? S_FALSE : S_OK;
}

HRESULT InputFile::Write(void const*, ULONG, ULONG* done) noexcept {
    if (done != nullptr) *done = 0;
    return E_NOTIMPL;
}

} // namespace tibxml::tool
