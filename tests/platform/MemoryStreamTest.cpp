#include "StreamCalls.h"

#include <TibXml/platform/Stream.h>
#include <TibXml/platform/StreamObject.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace {

class MemoryStream : public testing::Test {
protected:
    ~MemoryStream() override { EXPECT_EQ(stream_->Release(), 0u); }

    IStream* stream_ = SHCreateMemStream(reinterpret_cast<BYTE const*>("abcdef"), 6);
};

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

TEST_F(MemoryStream, RefusesToGrowBeyondAllBounds) {
    EXPECT_EQ(seek(stream_, std::numeric_limits<LONGLONG>::max(), STREAM_SEEK_SET), S_OK);
    EXPECT_EQ(writeTo(stream_, "x"), STG_E_MEDIUMFULL);
    EXPECT_EQ(stream_->SetSize({std::numeric_limits<ULONGLONG>::max()}), STG_E_MEDIUMFULL);
    EXPECT_EQ(sizeOf(stream_), 6u);
}

TEST_F(MemoryStream, DoesNotGiveItsBytesAway) {
    void* found = nullptr;
    ASSERT_EQ(stream_->QueryInterface(tibxml::platform::IID_IMemoryBytes, &found), S_OK);
    auto* const memory = static_cast<tibxml::platform::IMemoryBytes*>(found);
    BYTE const* bytes = nullptr;
    std::size_t size = 0;
    EXPECT_EQ(memory->TakeRest(&bytes, &size), E_NOTIMPL) << "a write may move them";
    memory->Release();
    EXPECT_EQ(readFrom(stream_, 6), (ReadResult{S_OK, "abcdef"}));
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

TEST_F(MemoryStream, RefusesToWriteFromNowhere) {
    ULONG done = 9;
    EXPECT_EQ(stream_->Write(nullptr, 1, &done), STG_E_INVALIDPOINTER);
    EXPECT_EQ(done, 0u);
    char const byte = 'x';
    EXPECT_EQ(stream_->Write(&byte, 1, nullptr), S_OK);
}

} // namespace
