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

} // namespace
