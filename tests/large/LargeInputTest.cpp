// Inputs far beyond what settings files are: seconds and gigabytes, so only on demand, as
// scripts/large-inputs does.
#include "TestStreams.h"

#include <TibXml/TibXml.h>

#include <sys/resource.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include <gtest/gtest.h>

namespace {

class LargeInput : public testing::Test {
protected:
    void SetUp() override {
        if (std::getenv("TIBXML_LARGE") == nullptr) GTEST_SKIP() << "set TIBXML_LARGE to run this";
        start_ = std::chrono::steady_clock::now();
    }

    void TearDown() override {
        if (IsSkipped()) return;
        std::chrono::duration<double> const time = std::chrono::steady_clock::now() - start_;
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        std::cout << "            " << time.count() << " s, peak of the process "
                  << usage.ru_maxrss / 1024 << " MB\n";
    }

private:
    std::chrono::steady_clock::time_point start_;
};

TEST_F(LargeInput, ADocumentOf300MegabytesLoadsAnswersAndSaves) {
    std::string const item =
        "\t<item id=\"7\" kind=\"k3\">\n\t\t<name>Name of it</name>\n\t\t<value>49</value>\n"
        "\t</item>\n";
    std::size_t const count = 300'000'000 / item.size();
    auto const stream = repeatingStream("<settings>\n", item, count, "<last/></settings>");
    WXmlDoc document;
    ASSERT_TRUE(document.Load(stream));
    WXmlNode const root = document.GetRootNode();
    EXPECT_EQ(root.GetNumChildren(), static_cast<int>(count + 1));
    EXPECT_TRUE(root.DoesNodeExist(L"last"));
    WXmlNode value;
    ASSERT_TRUE(root.GetNode(L"item[last()]/value", value));
    EXPECT_EQ(value.Value().GetInt(0), 49);
    EXPECT_TRUE(document.Save(L"/dev/null"));
}

TEST_F(LargeInput, ATextOf100MegabytesIsKeptWhole) {
    auto const stream = repeatingStream("<a>", "0123456789", 10'000'000, "</a>");
    WXmlDoc document;
    ASSERT_TRUE(document.Load(stream));
    CString const text = document.GetRootNode().Value().GetString();
    ASSERT_EQ(text.GetLength(), 100'000'000);
    EXPECT_EQ(text.Right(10), CString{L"0123456789"});
}

TEST_F(LargeInput, AnElementWith100000AttributesAnswersForEachEnd) {
    std::wstring text = L"<a";
    for (int i = 0; i != 100'000; ++i)
        text += L" a" + std::to_wstring(i) + L"='" + std::to_wstring(i) + L"'";
    text += L"/>";
    WXmlDoc document;
    ASSERT_TRUE(document.LoadFromString(text.c_str()));
    WXmlNode root = document.GetRootNode();
    EXPECT_EQ(root.Attribute(L"@a0").GetInt(-1), 0);
    EXPECT_EQ(root.Attribute(L"@a99999").GetInt(-1), 99'999);
    std::vector<CString> names;
    root.GetAttributes(names);
    ASSERT_EQ(names.size(), 100'000U);
    EXPECT_EQ(names.back(), CString{L"a99999"});
}

WXmlDoc stylesheetWith(std::wstring const& templates) {
    WXmlDoc sheet;
    EXPECT_TRUE(sheet.LoadFromString(
        (L"<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>" +
         templates + L"</xsl:stylesheet>")
            .c_str()));
    return sheet;
}

std::wstring const copyEverything =
    L"<xsl:template match='@*|node()'><xsl:copy><xsl:apply-templates select='@*|node()'/>"
    L"</xsl:copy></xsl:template>";

TEST_F(LargeInput, ADocumentOf50MegabytesIsTransformed) {
    std::string const item =
        "\t<item id=\"7\" kind=\"k3\">\n\t\t<name>Name of it</name>\n\t\t<value>49</value>\n"
        "\t</item>\n";
    std::size_t const count = 50'000'000 / item.size();
    auto const stream =
        repeatingStream("<settings>\n", item, count, "<last old='1'>before</last></settings>");
    WXmlDoc document;
    ASSERT_TRUE(document.Load(stream));
    WXmlDoc sheet = stylesheetWith(
        copyEverything +
        L"<xsl:template match='last'><new><xsl:value-of select='count(../item)'/></new>"
        L"</xsl:template><xsl:template match='item/@kind'/><xsl:template match='value'>"
        L"<value twice='{2 * .}'><xsl:apply-templates/></value></xsl:template>");
    ASSERT_TRUE(document.ApplyXSLT(sheet));
    WXmlNode const root = document.GetRootNode();
    EXPECT_EQ(root.GetNumChildren(), static_cast<int>(count + 1));
    EXPECT_FALSE(root.DoesNodeExist(L"last"));
    EXPECT_EQ(root.GetNode(L"new").Value().GetInt(0), static_cast<int>(count));
    EXPECT_FALSE(root.DoesNodeExist(L"item/@kind"));
    for (wchar_t const* const place : {L"item[1]", L"item[last()]"}) {
        WXmlNode const changed = root.GetNode(place);
        EXPECT_EQ(changed.Attribute(L"@id").GetInt(0), 7);
        EXPECT_EQ(changed.GetNode(L"name").Value().GetString(), CString{L"Name of it"});
        EXPECT_EQ(changed.GetNode(L"value").Value().GetInt(0), 49);
        EXPECT_EQ(changed.GetNode(L"value").Attribute(L"@twice").GetInt(0), 98);
    }
}

TEST_F(LargeInput, ATransformationMayGiveATextOf20Megabytes) {
    auto const stream = repeatingStream("<a>", "<t>0123456789</t>", 2'000'000, "</a>");
    WXmlDoc document;
    ASSERT_TRUE(document.Load(stream));
    WXmlDoc sheet = stylesheetWith(
        L"<xsl:template match='a'><r b='{t[1]}'><xsl:apply-templates/></r></xsl:template>");
    ASSERT_TRUE(document.ApplyXSLT(sheet));
    CString const text = document.GetRootNode().Value().GetString();
    ASSERT_EQ(text.GetLength(), 20'000'000);
    EXPECT_EQ(text.Left(12), CString{L"012345678901"});
    EXPECT_EQ(text.Right(10), CString{L"0123456789"});
    EXPECT_EQ(document.GetRootNode().Attribute(L"@b").GetString(), CString{L"0123456789"});
    EXPECT_TRUE(document.Save(L"/dev/null"));
}

// Of which the schema processor remembers something until the element ends.
TEST_F(LargeInput, AnElementWith4900000ChildrenOfARepeatedChoiceIsValidated) {
    std::string folder = (std::filesystem::temp_directory_path() / "large-XXXXXX").string();
    ASSERT_NE(::mkdtemp(folder.data()), nullptr);
    std::filesystem::path const schema = std::filesystem::path{folder} / "a.xsd";
    std::ofstream{schema} << "<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                             "<xs:element name='r'><xs:complexType><xs:choice "
                             "maxOccurs='unbounded'><xs:element name='a'/><xs:element name='b'/>"
                             "</xs:choice></xs:complexType></xs:element></xs:schema>";
    for (std::string const last : {"<b/></r>", "<c/></r>"}) {
        auto const stream = repeatingStream("<r>", "<a/>", 4'900'000, last);
        WXmlDoc document;
        ASSERT_TRUE(document.Load(stream));
        EXPECT_EQ(document.Validate(schema.wstring().c_str()), last == "<b/></r>") << last;
    }
    std::filesystem::remove_all(folder);
}

// What grows with the square of an input takes four times as long for twice as much of it; the
// limit leaves room for what a machine does beside. Each is measured the second time, because the
// first run takes its memory from the system.
template <class Make>
void expectLinear(Make makeOfSize, std::size_t size) {
    auto const secondsFor = [&](std::size_t count) {
        std::string const text = makeOfSize(count);
        auto const start = std::chrono::steady_clock::now();
        WXmlDoc document;
        EXPECT_TRUE(document.Load(slowStream(text, never)));
        std::chrono::duration<double> const time = std::chrono::steady_clock::now() - start;
        return time.count();
    };
    auto const secondTime = [&](std::size_t count) {
        secondsFor(count);
        return secondsFor(count);
    };
    double const one = secondTime(size);
    double const two = secondTime(2 * size);
    std::cout << "            " << size << ": " << one << " s, " << 2 * size << ": " << two
              << " s\n";
    EXPECT_LT(two, 3 * one);
}

std::string elementWith(std::size_t count, std::string const& before, std::string const& after) {
    std::string text = "<a";
    for (std::size_t i = 0; i != count; ++i)
        text += before + std::to_string(i) + after;
    return text + "/>";
}

TEST_F(LargeInput, TimeIsLinearInTheAttributesOfAnElement) {
    expectLinear([](std::size_t n) { return elementWith(n, " a", "='v'"); }, 500'000);
}

TEST_F(LargeInput, TimeIsLinearInTheAttributesWithPrefixes) {
    expectLinear(
        [](std::size_t n) {
            std::string text = elementWith(n, " p:a", "='v'");
            return text.insert(2, " xmlns:p='urn:p'");
        },
        250'000);
}

TEST_F(LargeInput, TimeIsLinearInTheDeclarationsOnAnElement) {
    expectLinear([](std::size_t n) { return elementWith(n, " xmlns:p", "='urn:u'"); }, 50'000);
}

TEST_F(LargeInput, TimeIsLinearInThePrefixesInUse) {
    expectLinear(
        [](std::size_t n) {
            std::string text = elementWith(n, " xmlns:p", "='urn:u'");
            text.resize(text.size() - 2);
            text += '>';
            for (std::size_t i = 0; i != n; ++i)
                text.append("<p").append(std::to_string(i)).append(":b/>");
            return text + "</a>";
        },
        50'000);
}

TEST_F(LargeInput, TimeIsLinearInDistinctNames) {
    expectLinear(
        [](std::size_t n) {
            std::string text = "<a>";
            for (std::size_t i = 0; i != n; ++i)
                text.append("<b").append(std::to_string(i)).append("/>");
            return text + "</a>";
        },
        200'000);
}

TEST_F(LargeInput, TimeIsLinearInTheLengthOfATokenThatComesInSmallPieces) {
    for (std::string const token : {"<!--", "<?p ", "<b c='", "<![CDATA["}) {
        std::string const end = token == "<!--"     ? "-->"
                                : token == "<?p "   ? "?>"
                                : token == "<b c='" ? "'/>"
                                                    : "]]>";
        expectLinear(
            [&](std::size_t n) { return "<a>" + token + std::string(n, 'x') + end + "</a>"; },
            20'000'000);
    }
}

TEST_F(LargeInput, AMillionAttributesAreKeptInOrder) {
    auto const text = elementWith(1'000'000, " a", "='v'");
    WXmlDoc document;
    ASSERT_TRUE(document.Load(slowStream(text, never)));
    std::vector<CString> names;
    document.GetRootNode().GetAttributes(names);
    ASSERT_EQ(names.size(), 1'000'000U);
    EXPECT_EQ(names.front(), CString{L"a0"});
    EXPECT_EQ(names.back(), CString{L"a999999"});
}

TEST_F(LargeInput, TheLastOfAMillionAttributesMayNotBeTheFirstAgain) {
    std::string text = elementWith(1'000'000, " a", "='v'");
    text.insert(text.size() - 2, " a0='w'");
    WXmlDoc document;
    EXPECT_FALSE(document.Load(slowStream(text, never)));
}

TEST_F(LargeInput, NestingOf200000LevelsIsRefused) {
    auto const stream = repeatingStream("<a>", "<a>", 200'000, "</a>");
    WXmlDoc document;
    EXPECT_FALSE(document.Load(stream));
    EXPECT_FALSE(document.IsLoaded());
}

} // namespace
