// What each setter writes.
#include "EngineTest.h"

#include <limits>

namespace {

/// The text that a setter leaves in an element; every setter writes the same into an attribute.
template <class Action>
std::string written(Action const& set) {
    WXmlNode const node = loaded(L"<a>old<b/></a>").GetRootNode();
    WXmlValueAccessor value = node.Value();
    WXmlValueAccessor attribute = node.Attribute(L"@k");
    set(value);
    set(attribute);
    EXPECT_EQ(utf8(attribute.GetString()), utf8(value.GetString()));
    EXPECT_FALSE(node.DoesNodeExist(L"*")) << "the text takes the place of all children";
    return utf8(value.GetString());
}

using Accessor = WXmlValueAccessor;

TEST(Writing, Bool) {
    EXPECT_EQ(written([](Accessor& a) { a.SetBool(true); }), "true");
    EXPECT_EQ(written([](Accessor& a) { a.SetBool(false); }), "false");
}

TEST(Writing, Int) {
    EXPECT_EQ(written([](Accessor& a) { a.SetInt(0); }), "0");
    EXPECT_EQ(written([](Accessor& a) { a.SetInt(42); }), "42");
    EXPECT_EQ(written([](Accessor& a) { a.SetInt(std::numeric_limits<int>::min()); }),
              "-2147483648");
}

TEST(Writing, Int64) {
    using Limits = std::numeric_limits<__int64>;
    EXPECT_EQ(written([](Accessor& a) { a.SetIntPtr(Limits::min()); }), "-9223372036854775808");
    EXPECT_EQ(written([](Accessor& a) { a.SetIntPtr(Limits::max()); }), "9223372036854775807");
}

TEST(Writing, UnsignedInt64) {
    EXPECT_EQ(written([](Accessor& a) { a.SetUIntPtr(0); }), "0");
    EXPECT_EQ(
        written([](Accessor& a) { a.SetUIntPtr(std::numeric_limits<unsigned long long>::max()); }),
        "18446744073709551615");
}

TEST(Writing, Double) {
    EXPECT_EQ(written([](Accessor& a) { a.SetDouble(0.1); }), "0.100000");
    EXPECT_EQ(written([](Accessor& a) { a.SetDouble(1.5); }), "1.500000");
    EXPECT_EQ(written([](Accessor& a) { a.SetDouble(-0.25); }), "-0.250000");
    EXPECT_EQ(written([](Accessor& a) { a.SetDouble(1e20); }), "100000000000000000000.000000");
    EXPECT_EQ(written([](Accessor& a) { a.SetDouble(1e-9); }), "0.000000");
}

TEST(Writing, TheGreatestDouble) {
    std::string const text =
        written([](Accessor& a) { a.SetDouble(-std::numeric_limits<double>::max()); });
    EXPECT_EQ(text.size(), 1U + 309U + 7U);
    EXPECT_EQ(text.substr(0, 6), "-17976");
}

TEST(Writing, String) {
    EXPECT_EQ(written([](Accessor& a) { a.SetString(L" a <&> \"b\" "); }), " a <&> \"b\" ");
    EXPECT_EQ(written([](Accessor& a) { a.SetString(L""); }), "");
    EXPECT_EQ(written([](Accessor& a) { a.SetString(nullptr); }), "");
    EXPECT_EQ(written([](Accessor& a) { a.SetString(L"\x1F600"); }), "\xF0\x9F\x98\x80");
}

TEST(Writing, Geometry) {
    constexpr LONG least = std::numeric_limits<LONG>::min();
    EXPECT_EQ(written([](Accessor& a) { a.SetPoint({1, -2}); }), "(1,-2)");
    EXPECT_EQ(written([](Accessor& a) { a.SetSize({3, 4}); }), "(3,4)");
    EXPECT_EQ(written([](Accessor& a) { a.SetRect({1, 2, 3, 4}); }), "1,2,3,4");
    EXPECT_EQ(written([](Accessor& a) {
                  a.SetRect({least, least, least, least});
              }),
              "-2147483648,-2147483648,-2147483648,-2147483648");
}

TEST(Writing, WhatIsWrittenReadsBack) {
    WXmlNode const node = loaded(L"<a/>").GetRootNode();
    WXmlValueAccessor value = node.Value();
    value.SetPoint({-5, 6});
    EXPECT_TRUE(value.GetPoint() == (CPoint{-5, 6}));
    value.SetSize({-5, 6});
    EXPECT_TRUE(value.GetSize() == (CSize{-5, 6}));
    value.SetRect({-1, 2, -3, 4});
    EXPECT_TRUE(value.GetRect() == (CRect{-1, 2, -3, 4}));
    value.SetDouble(-1234.5);
    EXPECT_EQ(value.GetDouble(), -1234.5);
    value.SetIntPtr(std::numeric_limits<__int64>::min());
    EXPECT_EQ(value.GetIntPtr(), std::numeric_limits<__int64>::min());
}

TEST(Writing, WrittenValuesAreSavedWithTheDocument) {
    WXmlDoc const document = loaded(L"<a><b/></a>");
    nodeAt(document, L"b").Value().SetString(L"<&> \x20AC");
    nodeAt(document, L"b").Attribute(L"@k").SetString(L"\"<&>\n");
    WXmlDoc const again = loaded(document.SaveToString());
    EXPECT_EQ(utf8(nodeAt(again, L"b").Value().GetString()), "<&> \xE2\x82\xAC");
    EXPECT_EQ(utf8(nodeAt(again, L"b").Attribute(L"@k").GetString()), "\"<&>\n");
}

TEST(Writing, CharactersThatXmlCannotHoldAreRaisedAndChangeNothing) {
    WXmlDoc const document = loaded(L"<a k='1'>old</a>");
    WXmlNode const node = document.GetRootNode();
    for (wchar_t const* const text : {L"\x01", L"x\xFFFE", L"\xD800"}) {
        EXPECT_EQ(codeOf([&] { node.Value().SetString(text); }), E_INVALIDARG);
        EXPECT_EQ(codeOf([&] { node.Attribute(L"@k").SetString(text); }), E_INVALIDARG);
    }
    EXPECT_EQ(utf8(document.SaveToString()), "<a k=\"1\">old</a>\n");
}

} // namespace
