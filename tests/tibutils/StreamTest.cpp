#include <TibXml/tibutils/Optional.h>
#include <TibXml/tibutils/Stream.h>

#include <gtest/gtest.h>

#include "TemporaryFolder.h"

#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

namespace {

using TibUtils::Stream;

static_assert(std::is_same_v<TibUtils::optional<int>, std::optional<int>>);
static_assert(std::is_nothrow_copy_constructible_v<Stream>);
static_assert(std::is_nothrow_move_constructible_v<Stream>);
static_assert(!std::is_convertible_v<IStream*, Stream>);

std::string readAll(IStream* stream) {
    char buffer[64];
    ULONG count = 0;
    EXPECT_GE(stream->Read(buffer, sizeof buffer, &count), 0);
    return std::string(buffer, count);
}

ULONG referencesOf(IStream* stream) {
    stream->AddRef();
    return stream->Release();
}

Stream fromText(std::string const& text) {
    return Stream::FromMemory(text.data(), text.size());
}

TEST(Stream, DefaultAndNullAreNoStream) {
    EXPECT_EQ(static_cast<IStream*>(Stream()), nullptr);
    EXPECT_EQ(static_cast<IStream*>(Stream(nullptr)), nullptr);
}

TEST(Stream, ReadsACopyOfTheBytes) {
    std::string text = "<a/>";
    Stream const stream = fromText(text);
    text = "gone";
    EXPECT_EQ(readAll(stream), "<a/>");
    EXPECT_EQ(readAll(stream), "");
}

TEST(Stream, BytesMayBeNone) {
    EXPECT_EQ(readAll(Stream::FromMemory(nullptr, 0)), "");
    EXPECT_NE(static_cast<IStream*>(Stream::FromMemory(nullptr, 0)), nullptr);
}

TEST(Stream, RefusesMoreBytesThanAStreamHolds) {
    std::size_t const tooMany = std::size_t{std::numeric_limits<UINT>::max()} + 1;
    EXPECT_THROW(Stream::FromMemory("", tooMany), std::length_error);
}

TEST(Stream, ReadsTheBytesWhereTheyAre) {
    std::string text = "<a/>";
    Stream const stream = Stream::OverMemory(text.data(), text.size());
    text[1] = 'b';
    EXPECT_EQ(readAll(stream), "<b/>");
    EXPECT_EQ(readAll(stream), "");
    EXPECT_EQ(static_cast<IStream*>(stream)->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
    EXPECT_EQ(referencesOf(stream), 1U);
}

TEST(Stream, BytesWhereTheyAreMayBeNone) {
    EXPECT_EQ(readAll(Stream::OverMemory(nullptr, 0)), "");
}

TEST(Stream, SharesAStreamWithoutTakingItsReference) {
    IStream* const platform = SHCreateMemStream(nullptr, 0);
    ASSERT_NE(platform, nullptr);
    {
        Stream const stream(platform);
        EXPECT_EQ(static_cast<IStream*>(stream), platform);
        EXPECT_EQ(referencesOf(platform), 2U);
    }
    EXPECT_EQ(referencesOf(platform), 1U);
    platform->Release();
}

TEST(Stream, IsTheOnlyOwnerOfWhatItMade) {
    EXPECT_EQ(referencesOf(fromText("x")), 1U);
}

TEST(Stream, CopiesShareTheStreamAndItsPosition) {
    Stream const first = fromText("abc");
    Stream const second(first); // NOLINT(performance-unnecessary-copy-initialization): the point
    EXPECT_EQ(referencesOf(first), 2U);
    EXPECT_EQ(readAll(first), "abc");
    EXPECT_EQ(readAll(second), "");
}

TEST(Stream, CopiesKeepTheStreamAlive) {
    Stream kept;
    {
        Stream const made = fromText("abc");
        kept = made;
    }
    EXPECT_EQ(readAll(kept), "abc");
}

TEST(Stream, MovesHandTheStreamOver) {
    Stream first = fromText("abc");
    Stream second(std::move(first));
    // NOLINTNEXTLINE(bugprone-use-after-move): what is left is promised
    EXPECT_EQ(static_cast<IStream*>(first), nullptr);
    EXPECT_EQ(referencesOf(second), 1U);
    first = std::move(second);
    EXPECT_EQ(readAll(first), "abc");
}

TEST(Stream, AssigningToItselfKeepsTheStream) {
    Stream stream = fromText("abc");
    Stream const& same = stream;
    stream = same;
    EXPECT_EQ(referencesOf(stream), 1U);
    EXPECT_EQ(readAll(stream), "abc");
}

class StreamOfFile : public InTemporaryFolder {};

TEST_F(StreamOfFile, ReadsTheFile) {
    write("gr\xC3\xBC\xC3\x9F.xml", "<a/>");
    EXPECT_EQ(readAll(Stream::FromFile(widePath("gr\xC3\xBC\xC3\x9F.xml").c_str())), "<a/>");
}

TEST_F(StreamOfFile, IsNoStreamWhenThereIsNoSuchFile) {
    EXPECT_EQ(static_cast<IStream*>(Stream::FromFile(widePath("nothing").c_str())), nullptr);
    EXPECT_EQ(static_cast<IStream*>(Stream::FromFile(wideOf(folder).c_str())), nullptr);
    EXPECT_EQ(static_cast<IStream*>(Stream::FromFile(L"")), nullptr);
    EXPECT_EQ(static_cast<IStream*>(Stream::FromFile(nullptr)), nullptr);
}

} // namespace
