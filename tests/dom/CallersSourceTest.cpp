// What callers write against the one header that has it all.
#include <TibXml/TibXml.h>

#include <gtest/gtest.h>

#include <type_traits>

namespace {

TEST(CallersSource, MayCallTheUnsignedNumberByThePlatformsName) {
    unsigned __int64 number = 0;
    number -= 1;
    EXPECT_EQ(number, 18446744073709551615U);
    static_assert(sizeof(unsigned __int64) == 8 && sizeof(__int64) == 8);
    static_assert(std::is_same_v<unsigned __int64, unsigned long long>);
    WXmlDoc const document = WXmlDoc::CreateFromString(L"<a b='7'/>");
    WXmlValueAccessor const value = document.GetRootNode().Attribute(L"@b");
    EXPECT_EQ(value.Get<unsigned __int64>().value_or(0), 7U);
    EXPECT_EQ(value.GetUIntPtr(number), 7U);
}

TEST(CallersSource, NeedsNoOtherHeaderForStreams) {
    WXmlDoc document;
    EXPECT_TRUE(document.Load(TibUtils::Stream::FromMemory("<a/>", 4)));
    EXPECT_TRUE(document.IsLoaded());
}

TEST(CallersSource, NeedsNoOtherHeaderForTheRuntime) {
    EXPECT_EQ(CoInitialize(nullptr), S_OK);
    CoUninitialize();
}

CString textOf(CString text) {
    return text;
}

TEST(CallersSource, MayMakeAStringOfAPath) {
    WXPath const path{L"a/b[@c='d']"};
    WXPath changing{L"e"};
    CString const made(path);
    CString const braced{changing};
    CString const copied = path;
    CString assigned;
    assigned = path;
    CString again(L"other");
    again = changing;
    EXPECT_TRUE(made == L"a/b[@c='d']");
    EXPECT_TRUE(braced == L"e");
    EXPECT_TRUE(copied == made);
    EXPECT_TRUE(assigned == made);
    EXPECT_TRUE(again == braced);
    EXPECT_TRUE(textOf(path) == made);
}

} // namespace
