#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include <iconv.h>

#include <TibXml/platform/Utf.h>
#include <reader/Decoder.h>
#include <reader/ReadError.h>

#include "Decoding.h"
#include "Reading.h"

namespace tibxml::reader::test {

namespace {

std::string document(std::string_view encoding, std::string_view content) {
    std::string const name{encoding};
    return "<?xml version=\"1.0\" encoding=\"" + name + "\"?><a>" + std::string{content} + "</a>";
}

// Documents in encodings of all kinds, with characters of all the lengths that they have.
struct Sample {
    char const* encoding;
    char const* content;
    char const* bytes = nullptr; // of the content, after a start in ASCII
};

std::string bytesOf(Sample const& sample, std::string_view content) {
    if (sample.bytes == nullptr)
        return encoded(document(sample.encoding, content), sample.encoding);
    std::string bytes;
    for (std::size_t i = 0; i < content.size(); i += std::string_view{sample.content}.size())
        bytes += sample.bytes;
    return document(sample.encoding, bytes);
}

constexpr char const* ascii = "Lorem ipsum dolor sit amet, consectetur &amp; adipiscing elit.\r\n";
constexpr char const* mixed =
    "Gr\u00F6\u00DFe \u20AC \u3042 \U0001F600\U0010FFFF z, 0123456789abcdef\n";

constexpr Sample samples[] = {
    {"UTF-8", mixed},
    {"UTF-16LE", mixed},
    {"UTF-16BE", mixed},
    {"UTF-32LE", mixed},
    {"UTF-32BE", mixed},
    {"UTF-16BE", ascii},
    {"UTF-32LE", ascii},
    {"GB18030", mixed},
    {"ISO-8859-1", "Gr\u00F6\u00DFe \u00FF und 0123456789abcdef0123456789abcdef"},
    {"US-ASCII", ascii},
    {"ISO-8859-15", "1 \u20AC = 100 Cent"},
    {"KOI8-R", "\u041F\u0440\u0438\u0432\u0435\u0442, world"},
    {"Shift_JIS", "abc\u3042\u3044\uFF71\u3046xyz"},
    {"EUC-JP", "abc\u3042\u3044\u3046xyz"},
    {"ISO-2022-JP", "abc\u3042\u3044\u3046xyz\u3048"},
    {"BIG5-HKSCS", "\u00CA\u0304\u00EA\u030C \u4E00 \u00CA"}, // two bytes that are two characters
    {"UTF-7", "1 + 1 \u3042\u3044 \U0001F600\u20AC", "1 +- 1 +MEIwRA- +2D3eACCs-"},
    {"IBM037", "Gr\u00F6\u00DFe"},
    {"IBM273", "Gr\u00F6\u00DFe"},
};

} // namespace

TEST(Decoders, GiveTheSameTextInPiecesOfAnySize) {
    for (Sample const& sample : samples) {
        std::string const text = document(sample.encoding, sample.content);
        std::string const bytes = bytesOf(sample, sample.content);
        for (std::size_t size = 1; size <= 64; ++size) {
            for (std::size_t const step : {std::size_t{1}, size, 65 - size, std::size_t{65536}}) {
                Decoded const decoded = decode(bytes, step, size);
                ASSERT_EQ(decoded.failure, "") << sample.encoding << " " << step << " " << size;
                ASSERT_EQ(decoded.text, text) << sample.encoding << " " << step << " " << size;
            }
        }
    }
}

TEST(Decoders, GiveLargeDocuments) {
    for (Sample const& sample : samples) {
        std::string content;
        while (content.size() < 300000)
            content += sample.content;
        std::string const text = document(sample.encoding, content);
        std::string const bytes = bytesOf(sample, content);
        for (std::size_t const step : {std::size_t{997}, std::size_t{65536}, bytes.size()})
            EXPECT_TRUE(decode(bytes, step).text == text) << sample.encoding << " by " << step;
    }
}

TEST(Decoders, PassMarksOn) {
    std::string const text = "\uFEFF<a>\u00E4</a>";
    for (char const* const encoding : {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"})
        for (std::size_t const step : {1U, 2U, 3U, 64U})
            EXPECT_EQ(decode(encoded(text, encoding), step, step).text, text) << encoding;
}

TEST(Decoders, RefuseBytesThatAreNoText) {
    struct Row {
        char const* encoding;
        std::string content; // in the encoding
        std::string text;    // before the failure, after the start tag
        char const* failure;
    };

    using namespace std::string_literals;
    Row const rows[] = {
        {"windows-1252", "x\x81</a>", "x", "0x81 at offset 49 is not a character in windows-1252"},
        {"US-ASCII", "0123456789abcdef0123\xE4</a>", "0123456789abcdef0123",
         "0xE4 at offset 64 is not a character in US-ASCII"},
        {"EUC-JP", "\xFF\xFF", "", "0xFF at offset 42 is not a character in EUC-JP"},
        {"Shift_JIS", std::string(5000, 'a') + "\x80\xFF</r>", std::string(5000, 'a'),
         "0x80 at offset 5045 is not a character in Shift_JIS"},
        {"Shift_JIS", "x\x82", "x", "the document ends within a character in Shift_JIS"},
        {"UTF-16LE", "x\0\0\xD8y\0"s, "x", "0x00 0xD8 at offset 90 is not a character in UTF-16LE"},
        {"UTF-16LE", "x\0\0\xDC"s, "x", "0x00 0xDC at offset 90 is not a character in UTF-16LE"},
        {"UTF-16LE", "x\0\0\xD8"s, "x", "the document ends within a character in UTF-16LE"},
        {"UTF-16BE", "\0xy"s, "x", "the document ends within a character in UTF-16BE"},
        {"UTF-32LE", "x\0\0\0\0\xD8\0\0"s, "x",
         "0x00 0xD8 0x00 0x00 at offset 180 is not a character in UTF-32LE"},
        {"UTF-32BE", "\0\x11\0\0"s, "",
         "0x00 0x11 0x00 0x00 at offset 176 is not a character in UTF-32BE"},
        {"UTF-32BE", "\xFF\xFF\xFF\xFF"s, "",
         "0xFF 0xFF 0xFF 0xFF at offset 176 is not a character in UTF-32BE"},
        {"UTF-32BE", "\0\0\0"s, "", "the document ends within a character in UTF-32BE"},
    };
    for (Row const& row : rows) {
        std::string const start =
            "<?xml version=\"1.0\" encoding=\"" + std::string{row.encoding} + "\"?><a>";
        std::string const bytes = encoded(start, row.encoding) + row.content;
        for (std::size_t size = 1; size <= 64; ++size) {
            Decoded const decoded = decode(bytes, 65 - size, size);
            ASSERT_EQ(decoded.text, start + row.text) << row.encoding << " by " << size;
            ASSERT_EQ(decoded.failure, row.failure);
            ASSERT_GT(decoded.code, errorNotWellFormed);
        }
    }
}

// What the system's converter makes of bytes: the text before anything that is no character.
std::string convertedBySystem(std::string bytes, char const* encoding, bool& isWhole) {
    std::string out(4 * bytes.size() + 64, '\0');
    char* from = bytes.data();
    char* to = out.data();
    std::size_t left = bytes.size();
    std::size_t room = out.size();
    iconv_t const handle = iconv_open("UTF-8", encoding);
    isWhole = iconv(handle, &from, &left, &to, &room) != static_cast<std::size_t>(-1);
    iconv_close(handle);
    out.resize(out.size() - room);
    return out;
}

TEST(Decoders, JudgeRandomUnitsAsTheSystemDoes) {
    constexpr char32_t kinds[] = {'a', 'b', 0xE4, 0x20AC, 0xD800, 0xDBFF, 0xDC00, 0xFFFE, 0x1F600};
    std::mt19937 random{1};
    for (int round = 0; round != 4000; ++round) {
        char const* const encoding =
            std::array{"UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"}[round % 4];
        std::string bytes = encoded(document(encoding, ""), encoding);
        for (std::size_t i = random() % 60; i != 0; --i) {
            char32_t const kind = random() % 4 == 0 ? kinds[random() % std::size(kinds)] : U'c';
            bool const isBig = round % 2 != 0;
            int const size = round % 4 < 2 ? 2 : 4;
            for (int byte = 0; byte != size; ++byte)
                bytes += static_cast<char>(kind >> (8 * (isBig ? size - 1 - byte : byte)));
        }
        if (random() % 8 == 0) bytes.pop_back();
        bool isWhole = false;
        std::string const expected = convertedBySystem(bytes, encoding, isWhole);
        Decoded const decoded = decode(bytes, 1 + random() % 64, 1 + random() % 64);
        ASSERT_EQ(decoded.text, expected) << encoding << " in round " << round;
        ASSERT_EQ(decoded.failure.empty(), isWhole) << encoding << " in round " << round;
    }
}

TEST(Decoders, TellWhereTheSourceFailed) {
    for (Sample const& sample : samples) {
        std::string const text = document(sample.encoding, sample.content);
        std::string const bytes = bytesOf(sample, sample.content);
        for (std::size_t after = 0; after <= bytes.size(); ++after) {
            Bytes source{bytes, 5, after};
            Decoder decoder{source, EncodingRule::detect};
            Decoded const decoded = drain(decoder, 40);
            ASSERT_EQ(decoded.code, errorSource) << sample.encoding << " after " << after;
            ASSERT_EQ(decoded.failure, "the source could not be read");
            ASSERT_TRUE(text.starts_with(decoded.text)) << decoded.text;
        }
    }
}

TEST(Decoders, TakeTextThatIsAlwaysUtf8AsItIs) {
    std::string const text = document("UTF-16", "\u00E4");
    Bytes source{text};
    Decoder decoder{source, EncodingRule::alwaysUtf8};
    EXPECT_EQ(drain(decoder).text, text);
}

TEST(Decoders, GiveBytesInMemoryAsTheyAreWhenTheyAreUtf8) {
    for (std::string_view const text :
         {"<a/>", "\uFEFF<a/>", "", "<", "<?xml version='1.0' encoding='utf-8'?><a>\u00E4</a>"}) {
        std::optional<std::string_view> const same = Decoder::utf8In(text);
        ASSERT_TRUE(same) << text;
        EXPECT_EQ(same->data(), text.data());
        EXPECT_EQ(same->size(), text.size());
    }
    for (char const* const name : {"ISO-8859-1", "US-ASCII", "UTF-16", "nonsense", "KOI8-R"})
        EXPECT_FALSE(Decoder::utf8In(document(name, "x"))) << name;
    EXPECT_FALSE(Decoder::utf8In("<?xml version='1.0'" + std::string(70000, ' ') + "?><a/>"));
}

TEST(WideSources, GiveUtf8InPiecesOfAnySize) {
    std::string text = "\uFEFF<?xml encoding='latin1'?>";
    for (int i = 0; i != 300; ++i)
        text += i % 3 == 0 ? mixed : ascii;
    std::wstring wide;
    ASSERT_TRUE(platform::appendWide(wide, text));
    for (std::size_t size = 1; size <= 64; ++size) {
        WideSource source{wide};
        EXPECT_TRUE(drain(source, size).text == text) << size;
    }
    WideSource source{wide};
    EXPECT_TRUE(drain(source).text == text);
    WideSource empty{std::wstring_view{}};
    EXPECT_EQ(drain(empty).text, "");
}

TEST(WideSources, RefuseWhatIsNoCharacter) {
    struct Row {
        wchar_t bad;
        char const* failure;
    };

    constexpr Row rows[] = {
        {static_cast<wchar_t>(0xD800), "the text holds characters that are not Unicode: 0xD800"},
        {static_cast<wchar_t>(0xDFFF), "the text holds characters that are not Unicode: 0xDFFF"},
        {static_cast<wchar_t>(0x110000),
         "the text holds characters that are not Unicode: 0x110000"},
        {static_cast<wchar_t>(0xFFFFFFFF),
         "the text holds characters that are not Unicode: 0xFFFFFFFF"},
    };
    for (Row const& row : rows) {
        for (std::size_t before = 0; before != 40; ++before) {
            std::wstring const text =
                std::wstring(before, L'\u00E4') + row.bad + L"0123456789abcdef";
            for (std::size_t const size : {1U, 31U, 32U, 33U, 4096U}) {
                WideSource source{text};
                Decoded const decoded = drain(source, size);
                ASSERT_EQ(decoded.failure, row.failure);
                ASSERT_EQ(decoded.code, errorSource);
                ASSERT_EQ(decoded.text.size(), 2 * before);
            }
        }
    }
}

} // namespace tibxml::reader::test
