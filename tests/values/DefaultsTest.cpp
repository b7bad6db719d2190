// Getters that fall back to a default, and setters that clear what equals one.
#include "EngineTest.h"

#include <limits>

namespace {

class Defaults : public testing::Test {
protected:
    WXmlDoc document = loaded(L"<a k='5'>text</a>");
    WXmlNode node = document.GetRootNode();
    WXmlValueAccessor attribute = node.Attribute(L"@k");
    WXmlValueAccessor missing = node.Attribute(L"@missing");

    std::string text() const { return utf8(attribute.GetString(L"(missing)")); }
};

TEST_F(Defaults, AreForWhatIsMissing) {
    EXPECT_TRUE(missing.GetBool(true));
    EXPECT_EQ(missing.GetInt(-3), -3);
    EXPECT_EQ(missing.GetIntPtr(99999999999), 99999999999);
    EXPECT_EQ(missing.GetUIntPtr(18446744073709551615ULL), 18446744073709551615ULL);
    EXPECT_EQ(missing.GetDouble(1.5), 1.5);
    EXPECT_EQ(utf8(missing.GetString(L"x")), "x");
    EXPECT_TRUE(missing.GetString(nullptr).IsEmpty());
    EXPECT_TRUE(missing.GetPoint({1, 2}) == (CPoint{1, 2}));
    EXPECT_TRUE(missing.GetSize({1, 2}) == (CSize{1, 2}));
    EXPECT_TRUE(missing.GetRect({1, 2, 3, 4}) == (CRect{1, 2, 3, 4}));
}

TEST_F(Defaults, AreForWhatDoesNotRead) {
    WXmlValueAccessor const value = node.Value();
    EXPECT_FALSE(value.GetBool(false));
    EXPECT_EQ(value.GetInt(-3), -3);
    EXPECT_EQ(value.GetIntPtr(4), 4);
    EXPECT_EQ(value.GetUIntPtr(4), 4U);
    EXPECT_EQ(value.GetDouble(1.5), 1.5);
    EXPECT_EQ(utf8(value.GetString(L"x")), "text") << "every text is a string";
    EXPECT_TRUE(value.GetPoint({1, 2}) == (CPoint{1, 2}));
    EXPECT_TRUE(value.GetSize({1, 2}) == (CSize{1, 2}));
    EXPECT_TRUE(value.GetRect({1, 2, 3, 4}) == (CRect{1, 2, 3, 4}));
}

TEST_F(Defaults, AreNotForWhatReads) {
    EXPECT_EQ(attribute.GetInt(7), 5);
    EXPECT_EQ(attribute.GetIntPtr(7), 5);
    EXPECT_EQ(attribute.GetUIntPtr(7), 5U);
    EXPECT_EQ(attribute.GetDouble(7), 5);
    EXPECT_TRUE(attribute.GetSize({1, 2}) == (CSize{5, 5}));
    EXPECT_TRUE(attribute.GetRect({1, 2, 3, 4}) == (CRect{5, 5, 5, 5}));
    attribute.SetString(L"-0");
    EXPECT_EQ(attribute.GetDouble(5.0), 5.0);
    attribute.SetString(L"0");
    EXPECT_EQ(attribute.GetDouble(5.0), 0.0);
}

TEST_F(Defaults, AnEmptyTextIsAStringButNoNumber) {
    attribute.SetInt(3, 3);
    EXPECT_TRUE(attribute.Exists());
    EXPECT_EQ(attribute.GetInt(7), 7);
    EXPECT_EQ(utf8(attribute.GetString(L"x")), "");
}

TEST_F(Defaults, ValuesThatEqualThemClear) {
    auto const clears = [this](auto const& set) {
        attribute.SetString(L"old");
        set();
        return text().empty();
    };
    EXPECT_TRUE(clears([this] { attribute.SetBool(true, true); }));
    EXPECT_TRUE(clears([this] { attribute.SetInt(3, 3); }));
    EXPECT_TRUE(clears([this] { attribute.SetIntPtr(3, 3); }));
    EXPECT_TRUE(clears([this] { attribute.SetDouble(3, 3); }));
    EXPECT_TRUE(clears([this] { attribute.SetDouble(0.0, -0.0); }));
    EXPECT_TRUE(clears([this] { attribute.SetString(L"x", L"x"); }));
    EXPECT_TRUE(clears([this] { attribute.SetPoint({1, 2}, {1, 2}); }));
    EXPECT_TRUE(clears([this] { attribute.SetSize({1, 2}, {1, 2}); }));
    EXPECT_TRUE(clears([this] { attribute.SetRect({1, 2, 3, 4}, {1, 2, 3, 4}); }));
}

TEST_F(Defaults, ValuesThatDifferAreWritten) {
    attribute.SetBool(false, true);
    EXPECT_EQ(text(), "false");
    attribute.SetInt(3, 4);
    EXPECT_EQ(text(), "3");
    attribute.SetIntPtr(3, 4);
    EXPECT_EQ(text(), "3");
    attribute.SetDouble(1.5, 2);
    EXPECT_EQ(text(), "1.500000");
    attribute.SetString(L"x", L"X");
    EXPECT_EQ(text(), "x");
    attribute.SetPoint({1, 2}, {1, 3});
    EXPECT_EQ(text(), "(1,2)");
    attribute.SetPoint({1, 2}, {0, 2});
    EXPECT_EQ(text(), "(1,2)");
    attribute.SetSize({1, 2}, {1, 3});
    EXPECT_EQ(text(), "(1,2)");
    attribute.SetRect({1, 2, 3, 4}, {1, 2, 3, 5});
    EXPECT_EQ(text(), "1,2,3,4");
}

TEST_F(Defaults, NaNEqualsNothingAndIsWritten) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    attribute.SetDouble(nan, nan);
    EXPECT_EQ(text(), "nan");
}

TEST_F(Defaults, NullStringsEqualNothing) {
    attribute.SetString(nullptr, L"x");
    EXPECT_EQ(text(), "");
    attribute.SetString(L"x", nullptr);
    EXPECT_EQ(text(), "x");
    WXmlValueAccessor fresh = node.Attribute(L"@fresh");
    fresh.SetString(nullptr, nullptr);
    EXPECT_TRUE(fresh.Exists()) << "it was written, not cleared";
}

TEST_F(Defaults, ClearingCreatesNothing) {
    missing.SetInt(3, 3);
    EXPECT_FALSE(missing.Exists());
    EXPECT_NO_THROW(node.Attribute(nullptr).SetPoint({1, 2}, {1, 2})) << "no target, no fault";
    EXPECT_EQ(missingTypeOf([&] { node.Attribute(nullptr).SetPoint({1, 2}, {1, 3}); }), "rect");
}

} // namespace
