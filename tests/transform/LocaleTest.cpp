// Numbers in stylesheets are the same wherever the program runs.
#include "Transforming.h"

#include <TibXml/tibutils/DataEncoding.h>

#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <locale.h>

namespace transforming {

namespace {

// A locale with a decimal comma, made for this test because few machines have one installed.
class DecimalComma : public testing::Test {
protected:
    DecimalComma() {
        std::string const target = folder.path("comma");
        isMade_ = run("localedef -i de_DE -f UTF-8 '" + target + "' 2> /dev/null").status == 0;
        ::setenv("LOCPATH", folder.path("").c_str(), 1);
        isSet_ = std::setlocale(LC_ALL, "comma") != nullptr;
        ::unsetenv("LOCPATH");
    }

    ~DecimalComma() override { std::setlocale(LC_ALL, "C"); }

    void SetUp() override {
        ASSERT_TRUE(isMade_) << "localedef has not made the locale";
        ASSERT_TRUE(isSet_);
        ASSERT_EQ(printedNumber(), "1,5");
    }

    static std::string printedNumber() {
        std::array<char, 16> text{};
        std::snprintf(text.data(), text.size(), "%.1f", 1.5);
        return text.data();
    }

    // The root element of the result.
    static std::string transformed(std::string const& content) {
        WXmlDoc sheet;
        EXPECT_TRUE(sheet.LoadFromString(TibUtils::DataEncoding::Utf8Decode(stylesheet(content))));
        WXmlDoc document = WXmlDoc::CreateFromString(L"<d n='2.5' c='2,5'/>");
        if (!document.ApplyXSLT(sheet)) return "failed";
        return TibUtils::DataEncoding::Utf8Encode(document.GetRootNode().GetXML().view());
    }

    Folder const folder;

private:
    bool isMade_ = false;
    bool isSet_ = false;
};

struct Row {
    char const* expression;
    char const* result;
};

constexpr Row rows[] = {
    {"3 div 2", "1.5"},
    {"1.25 * 2", "2.5"},
    {"string(1 div 4)", "0.25"},
    {"number(/d/@n) + 1", "3.5"},
    {"number(/d/@c)", "NaN"},
    {"number('1e3,5')", "NaN"},
    {"1 div 3000000000", "3.33333333333333e-10"},
    {"format-number(1234.5, '#,##0.00')", "1,234.50"},
    {"round(2.5)", "3"},
    {"/d[@n = 2.5]/@n", "2.5"},
    {"sum(/d/@n)", "2.5"},
    {"substring('12345', 1.5, 2.6)", "234"},
};

TEST_F(DecimalComma, HasNoEffectOnNumbers) {
    for (Row const& row : rows) {
        std::string const content = std::string{"<xsl:template match='/'><b v=\"{"} +
                                    row.expression + "}\"/></xsl:template>";
        EXPECT_EQ(transformed(content), std::string{"<b v=\""} + row.result + "\"/>")
            << row.expression;
    }
}

TEST_F(DecimalComma, HasNoEffectOnConstantsThatAreReadWhenCompiling) {
    EXPECT_EQ(transformed("<xsl:template match='d[@n = 2.5]' priority='1.5'><b/></xsl:template>"
                          "<xsl:template match='d' priority='1.25'><c/></xsl:template>"),
              "<b/>");
}

TEST_F(DecimalComma, IsThereAgainAfterwards) {
    locale_t const before = ::uselocale(nullptr);
    for (char const* const content :
         {"<xsl:template match='/'><b v='{3 div 2}'/></xsl:template>",
          "<xsl:template match='/'><b v='{$none}'/></xsl:template>", "<xsl:template match='['/>",
          "<xsl:template match='/'><a/><b/></xsl:template>"}) {
        transformed(content);
        EXPECT_EQ(::uselocale(nullptr), before) << content;
        EXPECT_EQ(printedNumber(), "1,5") << content;
    }
}

TEST_F(DecimalComma, OfTheThreadAloneIsThereAgainToo) {
    locale_t const comma = ::duplocale(LC_GLOBAL_LOCALE);
    ASSERT_NE(comma, nullptr);
    std::setlocale(LC_ALL, "C");
    locale_t const before = ::uselocale(comma);
    EXPECT_EQ(transformed("<xsl:template match='/'><b v='{3 div 2}'/></xsl:template>"),
              "<b v=\"1.5\"/>");
    EXPECT_EQ(::uselocale(nullptr), comma);
    EXPECT_EQ(printedNumber(), "1,5");
    ::uselocale(before);
    ::freelocale(comma);
}

TEST_F(DecimalComma, OfOtherThreadsIsNotTouched) {
    std::string others;
    std::thread other{[&] {
        for (int i = 0; i != 1000; ++i) {
            if (std::string const text = printedNumber(); text != "1,5") others += text;
        }
    }};
    for (int i = 0; i != 20; ++i) {
        EXPECT_EQ(transformed("<xsl:template match='/'><b v='{3 div 2}'/></xsl:template>"),
                  "<b v=\"1.5\"/>");
    }
    other.join();
    EXPECT_EQ(others, "");
}

} // namespace

} // namespace transforming
