#include "EngineTest.h"

#include <array>
#include <numeric>

namespace {

using Bytes = std::vector<unsigned char>;

Bytes bytesOf(WXmlValueAccessor const& value) {
    Bytes bytes(value.GetBinary(nullptr, 0));
    EXPECT_EQ(value.GetBinary(bytes.data(), bytes.size()), bytes.size());
    return bytes;
}

Bytes manyBytes(std::size_t count) {
    Bytes bytes(count);
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(0));
    return bytes;
}

class BinaryValues : public testing::Test {
protected:
    WXmlDoc document = loaded(L"<a><b/></a>");
    WXmlNode node = nodeAt(document, L"b");
    WXmlValueAccessor value = node.Value();
};

TEST_F(BinaryValues, ThreeBytes) {
    Bytes const bytes{1, 2, 255};
    value.SetBinary(bytes.data(), 3);
    EXPECT_EQ(value.GetBinary(nullptr, 0), 3U);
    std::array<unsigned char, 3> read{};
    EXPECT_EQ(value.GetBinary(read.data(), 3), 3U);
    EXPECT_EQ((Bytes{read.begin(), read.end()}), bytes);
    EXPECT_EQ(utf8(value.GetString()), "AQL/");
}

TEST_F(BinaryValues, TooSmallABufferIsLeftAlone) {
    value.SetBinary(manyBytes(3).data(), 3);
    std::array<unsigned char, 3> read{9, 9, 9};
    EXPECT_EQ(value.GetBinary(read.data(), 2), 3U);
    EXPECT_EQ(read, (std::array<unsigned char, 3>{9, 9, 9}));
    EXPECT_EQ(value.GetBinary(nullptr, 3), 3U) << "no buffer, nothing copied";
}

TEST_F(BinaryValues, ALargerBufferIsFilledOnlyAsFarAsNeeded) {
    value.SetBinary(manyBytes(2).data(), 2);
    std::array<unsigned char, 4> read{9, 9, 9, 9};
    EXPECT_EQ(value.GetBinary(read.data(), 4), 2U);
    EXPECT_EQ(read, (std::array<unsigned char, 4>{0, 1, 9, 9}));
}

TEST_F(BinaryValues, EveryLengthSurvivesSavingAndLoading) {
    for (std::size_t const count : {1U, 2U, 3U, 4U, 53U, 54U, 55U, 256U, 5000U}) {
        Bytes const bytes = manyBytes(count);
        value.SetBinary(bytes.data(), bytes.size());
        EXPECT_EQ(bytesOf(value), bytes) << count;
        WXmlDoc const again = loaded(document.SaveToString());
        EXPECT_EQ(bytesOf(nodeAt(again, L"b").Value()), bytes) << count;
    }
}

TEST_F(BinaryValues, NoBytesAreAnEmptyText) {
    unsigned char const any = 1;
    value.SetBinary(&any, 0);
    EXPECT_EQ(value.GetBinary(nullptr, 0), 0U);
    EXPECT_TRUE(value.IsEmpty());
}

TEST_F(BinaryValues, TheElementIsMarked) {
    unsigned char const byte = 0;
    value.SetBinary(&byte, 1);
    EXPECT_NE(utf8(document.SaveToString()).find(":dt=\"bin.base64\""), std::string::npos);
}

TEST_F(BinaryValues, PlainTextReadsAsNoBytes) {
    value.SetString(L"AQL/");
    EXPECT_EQ(value.GetBinary(nullptr, 0), 0U);
}

TEST_F(BinaryValues, WritingTextEndsIt) {
    value.SetBinary(manyBytes(3).data(), 3);
    value.SetString(L"AQL/");
    EXPECT_EQ(value.GetBinary(nullptr, 0), 0U);
    EXPECT_EQ(utf8(node.GetXML()).find("bin.base64"), std::string::npos);
}

TEST_F(BinaryValues, AttributesCannotHoldBytes) {
    WXmlValueAccessor attribute = node.Attribute(L"@k");
    attribute.SetString(L"old");
    attribute.SetBinary(manyBytes(3).data(), 3);
    EXPECT_EQ(utf8(attribute.GetString()), "old");
    EXPECT_EQ(attribute.GetBinary(nullptr, 0), 0U);
}

TEST_F(BinaryValues, WithoutATargetReadingThrowsAndWritingDoesNothing) {
    WXmlValueAccessor nothing = node.Attribute(nullptr);
    EXPECT_EQ(missingTypeOf([&] { nothing.GetBinary(nullptr, 0); }), "binary");
    nothing.SetBinary(manyBytes(3).data(), 3);
    EXPECT_EQ(missingTypeOf([&] { node.Attribute(L"@none").GetBinary(nullptr, 0); }), "binary");
}

TEST_F(BinaryValues, TextThatIsNotBase64IsRaised) {
    WXmlDoc const bad = loaded(L"<a xmlns:dt='urn:schemas-microsoft-com:datatypes' "
                               L"dt:dt='bin.base64'>%%%</a>");
    EXPECT_EQ(codeOf([&] { bad.GetRootNode().Value().GetBinary(nullptr, 0); }), E_FAIL);
}

TEST_F(BinaryValues, AnyPrefixAndWhiteSpaceReads) {
    WXmlDoc const other = loaded(L"<a xmlns:x='urn:schemas-microsoft-com:datatypes' "
                                 L"x:dt='bin.base64'> AQ\n L/ </a>");
    EXPECT_EQ(bytesOf(other.GetRootNode().Value()), (Bytes{1, 2, 255}));
}

} // namespace
