#include "StreamCalls.h"

#include <TibXml/platform/Stream.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

class MemoryStream : public testing::Test {
protected:
    ~MemoryStream() override { EXPECT_EQ(stream_->Release(), 0u); }

    IStream* stream_ = SHCreateMemStream(reinterpret_cast<BYTE const*>("abcdef"), 6);
};

TEST_F(MemoryStream, ReadsFromTheStartToTheEnd) {
    EXPECT_EQ(readFrom(stream_, 4), (ReadResult{S_OK, "abcd"}));
    EXPECT_EQ(readFrom(stream_, 4), (ReadResult{S_FALSE, "ef"}));
    EXPECT_EQ(readFrom(stream_, 4), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(readFrom(stream_, 0), (ReadResult{S_OK, ""}));
}

TEST_F(MemoryStream, ReadsExactlyToTheEnd) {
    EXPECT_EQ(readFrom(stream_, 6), (ReadResult{S_OK, "abcdef"}));
}

TEST_F(MemoryStream, WritesOverAndBeyond) {
    EXPECT_EQ(seek(stream_, 4, STREAM_SEEK_SET), S_OK);
    EXPECT_EQ(writeTo(stream_, "XYZ"), S_OK);
    EXPECT_EQ(sizeOf(stream_), 7u);
    seek(stream_, 0, STREAM_SEEK_SET);
    EXPECT_EQ(readFrom(stream_, 9), (ReadResult{S_FALSE, "abcdXYZ"}));
}

TEST_F(MemoryStream, FillsTheGapBeyondTheEndWithZeros) {
    EXPECT_EQ(seek(stream_, 2, STREAM_SEEK_END), S_OK);
    EXPECT_EQ(sizeOf(stream_), 6u);
    EXPECT_EQ(readFrom(stream_, 1), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(writeTo(stream_, ""), S_OK);
    EXPECT_EQ(sizeOf(stream_), 6u);
    EXPECT_EQ(writeTo(stream_, "z"), S_OK);
    seek(stream_, 0, STREAM_SEEK_SET);
    EXPECT_EQ(readFrom(stream_, 9), (ReadResult{S_OK, std::string{"abcdef\0\0z", 9}}));
}

TEST_F(MemoryStream, SeeksFromEveryOrigin) {
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

TEST_F(MemoryStream, RefusesImpossiblePositions) {
    seek(stream_, 3, STREAM_SEEK_SET);
    EXPECT_EQ(seek(stream_, -1, STREAM_SEEK_SET), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream_, -4, STREAM_SEEK_CUR), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream_, -7, STREAM_SEEK_END), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream_, std::numeric_limits<LONGLONG>::max(), STREAM_SEEK_CUR),
              STG_E_INVALIDFUNCTION);
    EXPECT_EQ(seek(stream_, 0, 3), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(positionOf(stream_), 3u);
}

TEST_F(MemoryStream, RefusesToGrowBeyondAllBounds) {
    EXPECT_EQ(seek(stream_, std::numeric_limits<LONGLONG>::max(), STREAM_SEEK_SET), S_OK);
    EXPECT_EQ(writeTo(stream_, "x"), STG_E_MEDIUMFULL);
    EXPECT_EQ(stream_->SetSize({std::numeric_limits<ULONGLONG>::max()}), STG_E_MEDIUMFULL);
    EXPECT_EQ(sizeOf(stream_), 6u);
}

TEST_F(MemoryStream, ChangesItsSize) {
    EXPECT_EQ(stream_->SetSize({2}), S_OK);
    EXPECT_EQ(readFrom(stream_, 9), (ReadResult{S_FALSE, "ab"}));
    EXPECT_EQ(stream_->SetSize({4}), S_OK);
    EXPECT_EQ(readFrom(stream_, 9), (ReadResult{S_FALSE, std::string{"\0\0", 2}}));
}

TEST_F(MemoryStream, ReadsNothingWhenCutBehindItsBack) {
    seek(stream_, 5, STREAM_SEEK_SET);
    stream_->SetSize({2});
    EXPECT_EQ(readFrom(stream_, 1), (ReadResult{S_FALSE, ""}));
}

TEST_F(MemoryStream, ClonesShareTheBytesButNotThePosition) {
    readFrom(stream_, 2);
    IStream* clone = nullptr;
    ASSERT_EQ(stream_->Clone(&clone), S_OK);
    EXPECT_EQ(readFrom(clone, 2), (ReadResult{S_OK, "cd"}));
    EXPECT_EQ(writeTo(clone, "!"), S_OK);
    EXPECT_EQ(readFrom(stream_, 9), (ReadResult{S_FALSE, "cd!f"}));
    EXPECT_EQ(clone->Release(), 0u);
    EXPECT_EQ(stream_->Clone(nullptr), STG_E_INVALIDPOINTER);
}

TEST_F(MemoryStream, CopiesToAnotherStream) {
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

TEST_F(MemoryStream, CopiesMoreThanOnePiece) {
    std::string const content(100000, 'x');
    auto* const source = SHCreateMemStream(reinterpret_cast<BYTE const*>(content.data()), 100000);
    ULARGE_INTEGER read{};
    ULARGE_INTEGER written{};
    EXPECT_EQ(source->CopyTo(stream_, {~0ULL}, &read, &written), S_OK);
    EXPECT_EQ(read.QuadPart, 100000u);
    EXPECT_EQ(written.QuadPart, 100000u);
    EXPECT_EQ(sizeOf(stream_), 100000u);
    source->Release();
}

TEST_F(MemoryStream, TellsAboutItself) {
    STATSTG status{};
    EXPECT_EQ(stream_->Stat(&status, STATFLAG_DEFAULT), S_OK);
    EXPECT_EQ(status.pwcsName, nullptr);
    EXPECT_EQ(status.type, STGTY_STREAM);
    EXPECT_EQ(status.cbSize.QuadPart, 6u);
    EXPECT_EQ(status.grfMode, STGM_READWRITE);
    EXPECT_EQ(stream_->Stat(nullptr, STATFLAG_DEFAULT), STG_E_INVALIDPOINTER);
}

TEST_F(MemoryStream, HasNothingToCommitOrLock) {
    EXPECT_EQ(stream_->Commit(STGC_DEFAULT), S_OK);
    EXPECT_EQ(stream_->Revert(), E_NOTIMPL);
    EXPECT_EQ(stream_->LockRegion({0}, {1}, 0), STG_E_INVALIDFUNCTION);
    EXPECT_EQ(stream_->UnlockRegion({0}, {1}, 0), STG_E_INVALIDFUNCTION);
}

TEST_F(MemoryStream, RefusesNullBuffers) {
    ULONG done = 9;
    EXPECT_EQ(stream_->Read(nullptr, 1, &done), STG_E_INVALIDPOINTER);
    EXPECT_EQ(done, 0u);
    EXPECT_EQ(stream_->Write(nullptr, 1, &done), STG_E_INVALIDPOINTER);
    char byte = 0;
    EXPECT_EQ(stream_->Read(&byte, 1, nullptr), S_OK);
    EXPECT_EQ(byte, 'a');
    EXPECT_EQ(stream_->Write(&byte, 1, nullptr), S_OK);
}

TEST_F(MemoryStream, OffersItsInterfaces) {
    for (auto const& iid : {IID_IUnknown, IID_ISequentialStream, IID_IStream}) {
        void* found = nullptr;
        EXPECT_EQ(stream_->QueryInterface(iid, &found), S_OK);
        EXPECT_EQ(found, stream_);
        stream_->Release();
    }
}

} // namespace
