#include "StreamCalls.h"

#include <TibXml/platform/Stream.h>
#include <TibXml/platform/StreamObject.h>

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <stdexcept>

namespace {

/// A way to make a stream over bytes in memory.
struct Kind {
    char const* name;
    IStream* (*over)(char const* bytes, UINT count);
    DWORD access;
};

IStream* overACopy(char const* bytes, UINT count) {
    return SHCreateMemStream(reinterpret_cast<BYTE const*>(bytes), count);
}

IStream* overTheBytesThemselves(char const* bytes, UINT count) {
    return tibxml::platform::borrowedStream(bytes, count);
}

/// A caller's stream whose writing ends by an exception.
class ThrowingTarget final : public tibxml::platform::StreamObject {
public:
    explicit ThrowingTarget(void (*thrown)()) noexcept : throw_{thrown} {}

    HRESULT Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }

    HRESULT Write(void const*, ULONG, ULONG*) override {
        throw_();
        return S_OK;
    }

    HRESULT Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }

    HRESULT SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }

    HRESULT Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }

    HRESULT Clone(IStream**) override { return E_NOTIMPL; }

private:
    void (*throw_)();
};

/// What all streams over bytes in memory have in common.
class MemoryReader : public testing::TestWithParam<Kind> {
protected:
    ~MemoryReader() override { EXPECT_EQ(stream_->Release(), 0u); }

    IStream* stream_ = GetParam().over("abcdef", 6);
};

INSTANTIATE_TEST_SUITE_P(Each, MemoryReader,
                         testing::Values(Kind{"Copied", overACopy, STGM_READWRITE},
                                         Kind{"Borrowed", overTheBytesThemselves, STGM_READ}),
                         [](auto const& each) { return each.param.name; });

TEST_P(MemoryReader, ReadsFromTheStartToTheEnd) {
    EXPECT_EQ(readFrom(stream_, 4), (ReadResult{S_OK, "abcd"}));
    EXPECT_EQ(readFrom(stream_, 4), (ReadResult{S_FALSE, "ef"}));
    EXPECT_EQ(readFrom(stream_, 4), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(readFrom(stream_, 0), (ReadResult{S_OK, ""}));
}

TEST_P(MemoryReader, ReadsExactlyToTheEnd) {
    EXPECT_EQ(readFrom(stream_, 6), (ReadResult{S_OK, "abcdef"}));
}

TEST_P(MemoryReader, SeeksFromEveryOrigin) {
    ULONGLONG position = 0;
    EXPECT_EQ(seek(stream_, 3, STREAM_SEEK_SET, &position), S_OK);
    EXPECT_EQ(position, 3u);
    EXPECT_EQ(seek(stream_, -1, STREAM_SEEK_CUR, &position), S_OK);
    EXPECT_EQ(position, 2u);
    EXPECT_EQ(seek(stream_, -2, STREAM_SEEK_END, &position), S_OK);
    EXPECT_EQ(position, 4u);
    EXPECT_EQ(stream_->Seek({0}, STREAM_SEEK_SET, nullptr), S_OK);
    EXPECT_EQ(positionOf(stream_), 0u);
}

TEST_P(MemoryReader, RefusesImpossiblePositions) {
    seek(stream_, 3, STREAM_SEEK_SET);
    EXPECT_EQ(seek(stream_, -1, STREAM_SEEK_SET), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream_, -4, STREAM_SEEK_CUR), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream_, -7, STREAM_SEEK_END), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream_, std::numeric_limits<LONGLONG>::max(), STREAM_SEEK_CUR),
              STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream_, 0, 3), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(positionOf(stream_), 3u);
}

TEST_P(MemoryReader, CopiesToAnotherStream) {
    auto* const target = SHCreateMemStream(nullptr, 0);
    ULARGE_INTEGER read{};
    ULARGE_INTEGER written{};
    readFrom(stream_, 1);
    EXPECT_EQ(stream_->CopyTo(target, {3}, &read, &written), S_OK);
    EXPECT_EQ(read.QuadPart, 3u);
    EXPECT_EQ(written.QuadPart, 3u);
    EXPECT_EQ(stream_->CopyTo(target, {99}, nullptr, nullptr), S_OK);
    seek(target, 0, STREAM_SEEK_SET);
    EXPECT_EQ(readFrom(target, 9), (ReadResult{S_FALSE, "bcdef"}));
    EXPECT_EQ(stream_->CopyTo(nullptr, {1}, &read, &written), STG_E_INVALIDPOINTER);
    target->Release();
}

TEST_P(MemoryReader, AnswersWhatATargetThrowsByItsCode) {
    struct {
        void (*thrown)();
        HRESULT code;
    } const cases[]{{[] { throw std::bad_alloc{}; }, E_OUTOFMEMORY},
                    {[] { throw std::runtime_error{"broken"}; }, STG_E_WRITEFAULT},
                    {[] { throw 7; }, STG_E_WRITEFAULT}};

    for (auto const& [thrown, code] : cases) {
        auto* const target = new ThrowingTarget{thrown};
        ULARGE_INTEGER read{99};
        ULARGE_INTEGER written{99};
        seek(stream_, 1, STREAM_SEEK_SET);
        EXPECT_EQ(stream_->CopyTo(target, {3}, &read, &written), code);
        EXPECT_EQ(read.QuadPart, 3u);
        EXPECT_EQ(written.QuadPart, 0u);
        EXPECT_EQ(positionOf(stream_), 4u);
        EXPECT_EQ(target->Release(), 0u);
    }
}

TEST_P(MemoryReader, TellsAboutItself) {
    STATSTG status{};
    EXPECT_EQ(stream_->Stat(&status, STATFLAG_DEFAULT), S_OK);
    EXPECT_EQ(status.pwcsName, nullptr);
    EXPECT_EQ(status.type, STGTY_STREAM);
    EXPECT_EQ(status.cbSize.QuadPart, 6u);
    EXPECT_EQ(status.grfMode, GetParam().access);
    EXPECT_EQ(stream_->Stat(nullptr, STATFLAG_DEFAULT), STG_E_INVALIDPOINTER);
}

TEST_P(MemoryReader, HasNothingToCommitOrLock) {
    EXPECT_EQ(stream_->Commit(STGC_DEFAULT), S_OK);
    EXPECT_EQ(stream_->Revert(), E_NOTIMPL);
    EXPECT_EQ(stream_->LockRegion({0}, {1}, 0), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(stream_->UnlockRegion({0}, {1}, 0), STG_E_INVALIDFUNCTION);
}

TEST_P(MemoryReader, OffersItsInterfaces) {
    for (auto const& iid : {IID_IUnknown, IID_ISequentialStream, IID_IStream}) {
        void* found = nullptr;
        EXPECT_EQ(stream_->QueryInterface(iid, &found), S_OK);
        EXPECT_EQ(found, stream_);
        stream_->Release();
    }
}

TEST_P(MemoryReader, RefusesToReadToNowhere) {
    ULONG done = 9;
    EXPECT_EQ(stream_->Read(nullptr, 1, &done), STG_E_INVALIDPOINTER);
    EXPECT_EQ(done, 0u);
    char byte = 0;
    EXPECT_EQ(stream_->Read(&byte, 1, nullptr), S_OK);
    EXPECT_EQ(byte, 'a');
}

TEST_P(MemoryReader, ReadsNothingBeyondTheEnd) {
    EXPECT_EQ(seek(stream_, 2, STREAM_SEEK_END), S_OK);
    EXPECT_EQ(readFrom(stream_, 1), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(positionOf(stream_), 8u);
}

TEST_P(MemoryReader, MayBeOverNothing) {
    IStream* const empty = GetParam().over(nullptr, 0);
    EXPECT_EQ(readFrom(empty, 1), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(sizeOf(empty), 0u);
    EXPECT_EQ(empty->Release(), 0u);
}

TEST_P(MemoryReader, ClonesHaveAPositionOfTheirOwn) {
    readFrom(stream_, 2);
    IStream* clone = nullptr;
    ASSERT_EQ(stream_->Clone(&clone), S_OK);
    EXPECT_EQ(readFrom(clone, 3), (ReadResult{S_OK, "cde"}));
    EXPECT_EQ(readFrom(stream_, 9), (ReadResult{S_FALSE, "cdef"}));
    EXPECT_EQ(clone->Release(), 0u);
    EXPECT_EQ(stream_->Clone(nullptr), STG_E_INVALIDPOINTER);
}

} // namespace
