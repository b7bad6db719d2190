#include <xpath/xpath_stream.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using TinyXPath::byte_stream;

TEST(ByteStream, EmptyTextIsOneZeroByte) {
    byte_stream stream("");
    EXPECT_EQ(stream.size(), 1U);
    EXPECT_FALSE(stream.more());
    EXPECT_EQ(stream.look(), 0);
    EXPECT_EQ(stream.lookAhead(), 0);
    stream.advance();
    EXPECT_EQ(stream.look(), 0);
}

TEST(ByteStream, ReadsByteByByteUpToTheZero) {
    byte_stream stream("ab");
    EXPECT_EQ(stream.size(), 3U);
    EXPECT_TRUE(stream.more());
    EXPECT_EQ(stream.look(), 'a');
    EXPECT_EQ(stream.lookAhead(), 'b');
    stream.advance();
    EXPECT_TRUE(stream.more());
    EXPECT_EQ(stream.look(), 'b');
    EXPECT_EQ(stream.lookAhead(), 0);
    stream.advance();
    EXPECT_FALSE(stream.more());
    EXPECT_EQ(stream.look(), 0);
}

TEST(ByteStream, AdvancingAtTheEndStaysThere) {
    byte_stream stream("a");
    stream.advance();
    stream.advance();
    EXPECT_EQ(std::string(stream.taken(1), 1), "a");
    EXPECT_FALSE(stream.more());
}

TEST(ByteStream, KeepsACopyOfItsOwn) {
    std::string text = "abc";
    byte_stream stream(text);
    text = "xyz";
    EXPECT_EQ(stream.look(), 'a');
}

TEST(ByteStream, BytesAreUnsigned) {
    byte_stream stream("\xFF\x80");
    EXPECT_EQ(stream.look(), 0xFF);
    EXPECT_EQ(stream.lookAhead(), 0x80);
}

} // namespace
