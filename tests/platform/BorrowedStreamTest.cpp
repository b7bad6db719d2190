#include "StreamCalls.h"

#include <TibXml/platform/StreamObject.h>

#include <gtest/gtest.h>

#include <string>

namespace {

class BorrowedStream : public testing::Test {
protected:
    ~BorrowedStream() override { EXPECT_EQ(stream_->Release(), 0u); }

    std::string bytes_ = "abcdef";
    IStream* stream_ = tibxml::platform::borrowedStream(bytes_.data(), bytes_.size());
};

TEST_F(BorrowedStream, ReadsTheBytesThemselves) {
    bytes_[1] = '!';
    EXPECT_EQ(readFrom(stream_, 6), (ReadResult{S_OK, "a!cdef"}));
}

TEST_F(BorrowedStream, CannotBeWrittenTo) {
    EXPECT_EQ(writeTo(stream_, "x"), STG_E_ACCESSDENIED);
    EXPECT_EQ(writeTo(stream_, ""), STG_E_ACCESSDENIED);
    EXPECT_EQ(stream_->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
    EXPECT_EQ(stream_->SetSize({2}), STG_E_ACCESSDENIED);
    EXPECT_EQ(readFrom(stream_, 9), (ReadResult{S_FALSE, "abcdef"}));
}

TEST_F(BorrowedStream, GivesItsRestInPlaceOnce) {
    EXPECT_EQ(readFrom(stream_, 2), (ReadResult{S_OK, "ab"}));
    void* found = nullptr;
    ASSERT_EQ(stream_->QueryInterface(tibxml::platform::IID_IMemoryBytes, &found), S_OK);
    auto* const memory = static_cast<tibxml::platform::IMemoryBytes*>(found);
    BYTE const* rest = nullptr;
    std::size_t size = 0;
    EXPECT_EQ(memory->TakeRest(&rest, &size), S_OK);
    EXPECT_EQ(static_cast<void const*>(rest), bytes_.data() + 2);
    EXPECT_EQ(size, 4U);
    EXPECT_EQ(readFrom(stream_, 1), (ReadResult{S_FALSE, ""}));
    EXPECT_EQ(memory->TakeRest(&rest, &size), S_OK);
    EXPECT_EQ(size, 0U);
    memory->Release();
}

TEST_F(BorrowedStream, GivesNothingFromAfterItsEnd) {
    ASSERT_EQ(stream_->Seek({100}, STREAM_SEEK_SET, nullptr), S_OK);
    void* found = nullptr;
    ASSERT_EQ(stream_->QueryInterface(tibxml::platform::IID_IMemoryBytes, &found), S_OK);
    auto* const memory = static_cast<tibxml::platform::IMemoryBytes*>(found);
    BYTE const* rest = nullptr;
    std::size_t size = 1;
    EXPECT_EQ(memory->TakeRest(&rest, &size), S_OK);
    EXPECT_EQ(size, 0U);
    memory->Release();
}

} // namespace
