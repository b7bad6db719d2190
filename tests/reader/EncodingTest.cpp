#include "Reading.h"

namespace tibxml::reader::test {

enum class ByteOrder { little, big };

std::string utf16(std::u16string_view text, ByteOrder order, bool withMark = true) {
    std::string bytes;
    std::u16string const marked = (withMark ? u"\uFEFF" : u"") + std::u16string{text};
    for (char16_t const unit : marked) {
        auto const low = static_cast<char>(unit & 0xFF);
        auto const high = static_cast<char>(unit >> 8);
        bytes += order == ByteOrder::little ? low : high;
        bytes += order == ByteOrder::little ? high : low;
    }
    return bytes;
}

std::string declared(std::string const& encoding, std::string const& rest) {
    return "<?xml version=\"1.0\" encoding=\"" + encoding + "\"?>" + rest;
}

// The shape of a document after its declaration.
std::string body(Reading const& reading) {
    std::string const all = shape(reading);
    return all.substr(all.find("<a"));
}

TEST(Encodings, AreThoseOfTheMarkOrTheDeclaration) {
    std::u16string const wide =
        u"<?xml version='1.0' encoding='UTF-16'?><a b='\u00E4'>\u20AC\U0001F600</a>";

    struct Row {
        char const* what;
        std::string bytes;
        char const* body;
    };

    Row const rows[] = {
        {"none", "<a>\u00E4</a>", "<a>\"\u00E4\"</>"},
        {"mark of UTF-8", "\xEF\xBB\xBF<a>\u00E4</a>", "<a>\"\u00E4\"</>"},
        {"UTF-8", declared("UTF-8", "<a>\u00E4</a>"), "<a>\"\u00E4\"</>"},
        {"mark and UTF-8", "\xEF\xBB\xBF" + declared("utf-8", "<a>\u00E4</a>"), "<a>\"\u00E4\"</>"},
        {"UTF-16LE", utf16(wide, ByteOrder::little), "<a b='\u00E4'>\"\u20AC\U0001F600\"</>"},
        {"UTF-16BE", utf16(wide, ByteOrder::big), "<a b='\u00E4'>\"\u20AC\U0001F600\"</>"},
        {"UTF-16 undeclared", utf16(u"<a>\u00E4</a>", ByteOrder::little), "<a>\"\u00E4\"</>"},
        {"UTF-16 without mark", utf16(wide, ByteOrder::big, false),
         "<a b='\u00E4'>\"\u20AC\U0001F600\"</>"},
        {"latin1", declared("ISO-8859-1", "<a b='\xE4'>\xFF</a>"), "<a b='\u00E4'>\"\u00FF\"</>"},
        {"latin1 misspelt", declared("ISO8859-1", "<a>\xE4</a>"), "<a>\"\u00E4\"</>"},
        {"latin1 in small letters", declared("iso-8859-1", "<a>\xE4</a>"), "<a>\"\u00E4\"</>"},
        {"windows-1252", declared("windows-1252", "<a>\x80</a>"), "<a>\"\u20AC\"</>"},
        {"latin9", declared("ISO-8859-15", "<a>\xA4</a>"), "<a>\"\u20AC\"</>"},
        {"ASCII", declared("US-ASCII", "<a>x</a>"), "<a>\"x\"</>"},
        {"EUC-JP", declared("EUC-JP", "<a>\xA4\xA2</a>"), "<a>\"\u3042\"</>"},
        {"Shift_JIS", declared("Shift_JIS", "<a>\x82\xA0</a>"), "<a>\"\u3042\"</>"},
    };
    for (Row const& row : rows) {
        for (std::size_t const step :
             {std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{7}, Bytes::never}) {
            Reading const reading = readBytes(Bytes{row.bytes, step});
            ASSERT_TRUE(reading.done) << row.what << ": " << reading.error.reason;
            EXPECT_EQ(body(reading), row.body) << row.what << " by " << step;
        }
    }
}

TEST(Encodings, StayInTheDeclarationAsWritten) {
    for (char const* const name : {"ISO8859-1", "iso-8859-1", "windows-1252", "uTf-8"}) {
        Reading const reading = readBytes(Bytes{declared(name, "<a/>")});
        EXPECT_EQ(shape(reading),
                  "<?xml version=\"1.0\" encoding=\"" + std::string{name} + "\"><a></>");
    }
}

TEST(Encodings, RefuseBytesThatAreNotValid) {
    std::string const half =
        utf16(std::u16string{u"<a>x"} + char16_t{0xD800} + u"y</a>", ByteOrder::little);

    struct Row {
        char const* what;
        std::string bytes;
    };

    Row const rows[] = {
        {"stray byte", "<a>\xFF</a>"},
        {"overlong", "<a>\xC0\xAF</a>"},
        {"surrogate in UTF-8", "<a>\xED\xA0\x80</a>"},
        {"beyond Unicode", "<a>\xF4\x90\x80\x80</a>"},
        {"cut character", "<a>\xE2\x82</a>"},
        {"in an attribute", "<a b='\xFF'/>"},
        {"in a comment", "<a><!--\xFF--></a>"},
        {"behind the root", "<a/><!--\xFF-->"},
        {"latin1 that says UTF-8", declared("UTF-8", "<a>\xE4</a>")},
        {"half a surrogate pair", half},
        {"half a character at the end", utf16(u"<a>x</a>", ByteOrder::little) + "x"},
        {"undefined in windows-1252", declared("windows-1252", "<a>\x81</a>")},
        {"undefined in EUC-JP", declared("EUC-JP", "<a>\xFF\xFF</a>")},
        {"undefined behind the root", declared("EUC-JP", "<a/>\n\xFF\xFF")},
        {"beyond ASCII", declared("US-ASCII", "<a>\xE4</a>")},
        {"unknown encoding", declared("nonsense", "<a/>")},
        {"no encoding", declared("", "<a/>")},
        {"not UTF-16 at all", declared("UTF-16", "<a/>")},
    };
    testing::internal::CaptureStderr();
    for (Row const& row : rows)
        expectFailure(readBytes(Bytes{row.bytes}), row.what);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Encodings, AreNamedWhenTheyAreTheReason) {
    Reading const reading = readBytes(Bytes{declared("windows-1252", "<a>\n\n<b>\x81</b></a>")});
    EXPECT_NE(reading.error.reason.find("windows-1252"), std::string::npos) << reading.error.reason;
    EXPECT_EQ(readBytes(Bytes{"<a>\n\xFF</a>"}).error.sourceLine, "\uFFFD</a>");
}

} // namespace tibxml::reader::test
