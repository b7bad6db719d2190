#include <TibXml/platform/Base64.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

using tibxml::platform::decodeBase64;
using tibxml::platform::encodeBase64;

namespace {

std::vector<BYTE> bytesOf(std::string_view text) {
    std::vector<BYTE> bytes(text.size());
    std::transform(text.begin(), text.end(), bytes.begin(),
                   [](char c) { return static_cast<BYTE>(c); });
    return bytes;
}

TEST(Base64, KnownPairs) {
    struct Row {
        std::string_view bytes;
        std::string_view text;
    };

    using namespace std::string_view_literals;
    Row const rows[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {"\0"sv, "AA=="},
        {"\0\0\0"sv, "AAAA"},
        {"\xFF\xFF\xFF", "////"},
        {"\xFB\xEF\xBE", "++++"},
    };
    for (auto const& [bytes, text] : rows) {
        EXPECT_EQ(encodeBase64(bytesOf(bytes)), text);
        EXPECT_EQ(decodeBase64(text), bytesOf(bytes)) << text;
    }
}

TEST(Base64, EveryLengthThereAndBack) {
    std::mt19937 random{7};
    for (std::size_t length = 0; length <= 1'000; ++length) {
        std::vector<BYTE> bytes(length);
        for (BYTE& byte : bytes)
            byte = static_cast<BYTE>(random());
        EXPECT_EQ(decodeBase64(encodeBase64(bytes)), bytes) << length;
    }
}

TEST(Base64, LinesOf72Characters) {
    for (std::size_t length = 0; length <= 400; ++length) {
        std::string const text = encodeBase64(std::vector<BYTE>(length, 0x5A));
        std::size_t const characters = (length + 2) / 3 * 4;
        for (std::size_t at = 0; at < text.size(); ++at)
            EXPECT_EQ(text[at] == '\n', at % 73 == 72) << length;
        EXPECT_EQ(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')),
                  text.size() - characters);
        EXPECT_FALSE(text.ends_with('\n'));
    }
}

TEST(Base64, WhiteSpaceAnywhere) {
    for (std::string_view const text : {"Zm9vYg==", " Zm9vYg==", "Zm9vYg== ", "Z m\t9\nv\rY  g=\n=",
                                        "\r\nZm9v\r\nYg==\r\n", "Zm9 vYg==", "Zm9v Yg = ="})
        EXPECT_EQ(decodeBase64(text), bytesOf("foob")) << text;
    for (std::string_view const text : {" ", "\n\t\r "})
        EXPECT_EQ(decodeBase64(text), std::vector<BYTE>{}) << text;
}

TEST(Base64, Refused) {
    using namespace std::string_view_literals;
    for (std::string_view const text :
         {"Z"sv,        "Zg"sv,      "Zg="sv,      "Zm9"sv,         "Zm9vZ"sv, "Zm9vZg"sv,
          "="sv,        "=="sv,      "===="sv,     "Z==="sv,        "Z=g="sv,  "Zg=v"sv,
          "Zg==="sv,    "Zg====="sv, "Zg==Zg=="sv, "Zg==Zm9v"sv,    "Zm9v="sv, "Zm9v===="sv,
          "Zm8=Zm8="sv, "Zh=="sv,    "Zm9="sv,     "Zm9-"sv,        "Zm9_"sv,  "Zm9v!"sv,
          "Zm\0v"sv,    "Zm9v\0"sv,  "Zm\x80v"sv,  "Zm9\xC3\xA4"sv, "Zm\vv"sv, "Zg==\f"sv})
        EXPECT_EQ(decodeBase64(text), std::nullopt) << text;
}

TEST(Base64, EveryForeignByteAtEveryPlaceIsRefused) {
    std::string const good = encodeBase64(std::vector<BYTE>(30, 0x33));
    ASSERT_NE(decodeBase64(good), std::nullopt);
    std::string_view const known =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/= \t\r\n";
    for (int code = 0; code < 256; ++code) {
        char const c = static_cast<char>(code);
        if (known.find(c) != std::string_view::npos) continue;
        for (std::size_t at = 0; at < good.size(); ++at) {
            std::string bad = good;
            bad[at] = c;
            EXPECT_EQ(decodeBase64(bad), std::nullopt) << code << " at " << at;
        }
    }
}

TEST(Base64, ManyBytes) {
    std::mt19937 random{11};
    std::vector<BYTE> bytes(3'000'001);
    for (BYTE& byte : bytes)
        byte = static_cast<BYTE>(random());
    EXPECT_TRUE(decodeBase64(encodeBase64(bytes)) == bytes);
}

} // namespace
