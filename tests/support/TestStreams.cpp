#include "TestStreams.h"

#include <TibXml/platform/ComObject.h>

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

/// A stream that can be read and nothing else.
class ReadOnly : public tibxml::platform::ComObject<IStream> {
public:
    HRESULT Write(void const*, ULONG, ULONG*) noexcept override { return E_NOTIMPL; }

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
};

class Slow final : public ReadOnly {
public:
    Slow(std::string bytes, std::size_t step, std::size_t failAfter)
        : bytes_{std::move(bytes)},
          step_{step},
          failAfter_{failAfter} {}

    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept override {
        *done = 0;
        if (position_ >= failAfter_) return STG_E_READFAULT;
        *done =
            static_cast<ULONG>(std::min({std::size_t{count}, step_, bytes_.size() - position_}));
        std::memcpy(buffer, bytes_.data() + position_, *done);
        position_ += *done;
        return *done == count ? S_OK : S_FALSE;
    }

private:
    std::string bytes_;
    std::size_t step_;
    std::size_t failAfter_;
    std::size_t position_ = 0;
};

class Throwing final : public ReadOnly {
public:
    Throwing(std::string bytes, std::function<void()> thrown)
        : bytes_{std::move(bytes)},
          thrown_{std::move(thrown)} {}

    // NOLINTNEXTLINE(bugprone-exception-escape): that is what it is for
    HRESULT Read(void* buffer, ULONG count, ULONG* done) override {
        if (position_ == bytes_.size()) thrown_();
        *done = static_cast<ULONG>(std::min<std::size_t>(count, bytes_.size() - position_));
        std::memcpy(buffer, bytes_.data() + position_, *done);
        position_ += *done;
        return S_OK;
    }

private:
    std::string const bytes_;
    std::function<void()> const thrown_;
    std::size_t position_ = 0;
};

class Repeating final : public ReadOnly {
public:
    Repeating(std::string head, std::string part, std::size_t count, std::string tail)
        : head_{std::move(head)},
          part_{std::move(part)},
          tail_{std::move(tail)},
          left_{count} {}

    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept override {
        if (rest_.empty()) rest_ = following();
        *done = static_cast<ULONG>(std::min<std::size_t>(count, rest_.size()));
        std::copy_n(rest_.data(), *done, static_cast<char*>(buffer));
        rest_.remove_prefix(*done);
        return S_OK;
    }

private:
    std::string_view following() noexcept {
        if (left_ == 0) return std::exchange(end_, {});
        --left_;
        return part_;
    }

    std::string const head_;
    std::string const part_;
    std::string const tail_;
    std::size_t left_;
    std::string_view rest_{head_}; // of the piece that is being read
    std::string_view end_{tail_};  // empty once it was read
};

} // namespace

EnginePtr<IStream> slowStream(std::string bytes, std::size_t step, std::size_t failAfter) {
    return EnginePtr<IStream>{new Slow{std::move(bytes), step, failAfter}, false};
}

EnginePtr<IStream> throwingStream(std::string bytes, std::function<void()> thrown) {
    return EnginePtr<IStream>{new Throwing{std::move(bytes), std::move(thrown)}, false};
}

EnginePtr<IStream> repeatingStream(std::string head, std::string part, std::size_t count,
                                   std::string tail) {
    return EnginePtr<IStream>{
        new Repeating{std::move(head), std::move(part), count, std::move(tail)}, false};
}
