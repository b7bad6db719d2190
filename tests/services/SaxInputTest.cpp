// Files, texts and streams, and what is wrong with them.
#include "../com/TemporaryFolder.h"
#include "SaxRecorder.h"
#include "TestStreams.h"

#include <TibXml/platform/ComError.h>
#include <TibXml/platform/ComObject.h>

#include <algorithm>

#include <malloc.h>

// There when the program is sanitized: then the C library's own count is none.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" [[gnu::weak]] std::size_t __sanitizer_get_current_allocated_bytes();

namespace {

std::size_t allocatedBytes() {
    if (&__sanitizer_get_current_allocated_bytes != nullptr)
        return __sanitizer_get_current_allocated_bytes();
    return ::mallinfo2().uordblks;
}

std::string const sample = "<?xml version='1.0' encoding='UTF-8'?>\r\n<a b='\u00E4\r\n1'>\r\n"
                           "<c>\u20AC\U0001F600&#x1F600;</c><![CDATA[ \u00E4 ]]>\r</a>\r\n";
std::string const sampleEvents =
    "document <a b='\u00E4 1'>\n<c>\u20AC\U0001F600\U0001F600</c> \u00E4 \n</a> end";

/// What the last parse said was wrong; empty when it said nothing.
std::string words() {
    IErrorInfo* info = nullptr;
    if (GetErrorInfo(0, &info) != S_OK) return {};
    _bstr_t text;
    info->GetDescription(text.GetAddress());
    info->Release();
    return utf8({static_cast<wchar_t const*>(text), text.length()});
}

std::wstring wide(std::string const& text) {
    return TibUtils::DataEncoding::Utf8Decode(text).GetString();
}

class SaxInput : public TemporaryFolder {
protected:
    bool parseFile(std::string const& name) {
        return recorder.sax.ParseFile(wide(path(name).string()).c_str());
    }

    bool parseBytes(std::string const& bytes, std::size_t step = never,
                    std::size_t failAfter = never) {
        return recorder.sax.ParseIStream(slowStream(bytes, step, failAfter));
    }

    SaxRecorder recorder;
};

TEST_F(SaxInput, MayBeAFile) {
    write("a.xml", sample);
    EXPECT_TRUE(parseFile("a.xml"));
    EXPECT_EQ(recorder.take(), sampleEvents);
}

TEST_F(SaxInput, MayBeAFileByItsUrl) {
    write("a b.xml", sample);
    write("%41.xml", "<plain/>");
    write("A.xml", "<decoded/>");
    std::wstring const folder = wide(path("").string());
    for (std::wstring const& url :
         {L"file://" + folder + L"a b.xml", L"file://localhost" + folder + L"a%20b.xml",
          L"file:" + folder + L"a%20b.xml", folder + L"a%20b.xml"}) {
        EXPECT_TRUE(recorder.sax.ParseFile(url.c_str())) << utf8(url);
        EXPECT_EQ(recorder.take(), sampleEvents) << utf8(url);
    }
    EXPECT_TRUE(parseFile("%41.xml"));
    EXPECT_EQ(recorder.take(), "document <plain></plain> end");
}

TEST_F(SaxInput, ThatIsNoFileFails) {
    EXPECT_FALSE(parseFile("gone.xml"));
    EXPECT_EQ(words(), "cannot open the file: No such file or directory");
    EXPECT_FALSE(parseFile("")); // the folder
    EXPECT_EQ(words(), "1:1: the source could not be read");
    EXPECT_FALSE(recorder.sax.ParseFile(L""));
    EXPECT_FALSE(recorder.sax.ParseFile(nullptr));
    EXPECT_FALSE(recorder.sax.ParseFile(L"\xD800"));
    EXPECT_FALSE(recorder.sax.ParseFile(L"http://localhost/a.xml"));
    EXPECT_EQ(recorder.take(), "");
}

TEST_F(SaxInput, MayBeAText) {
    EXPECT_TRUE(recorder.sax.ParseString(wide(sample).c_str()));
    EXPECT_EQ(recorder.take(), sampleEvents);
    EXPECT_TRUE(recorder.sax.ParseString(L"\xFEFF<a/>"));
    EXPECT_TRUE(recorder.sax.ParseString(L"<?xml version='1.0' encoding='nonsense'?><a/>"));
}

TEST_F(SaxInput, ThatIsNoTextFails) {
    for (wchar_t const* text : {static_cast<wchar_t const*>(nullptr), L"", L" \n", L"text",
                                L"\xD800<a/>", L"<a>\xDC00</a>", L" <?xml version='1.0'?><a/>"}) {
        EXPECT_FALSE(recorder.sax.ParseString(text));
        EXPECT_NE(words(), "");
    }
    EXPECT_EQ(recorder.take().find("end"), std::string::npos);
}

TEST_F(SaxInput, MayBeAStreamThatGivesLittleAtATime) {
    for (std::size_t const step :
         {std::size_t{1}, std::size_t{2}, std::size_t{7}, std::size_t{4096}, never}) {
        EXPECT_TRUE(parseBytes(sample, step)) << step;
        EXPECT_EQ(recorder.take(), sampleEvents) << step;
    }
}

TEST_F(SaxInput, OfAStreamBeginsAtItsPosition) {
    std::string const bytes = "xyz" + sample;
    EnginePtr<IStream> const stream{SHCreateMemStream(reinterpret_cast<BYTE const*>(bytes.data()),
                                                      static_cast<UINT>(bytes.size())),
                                    false};
    ASSERT_EQ(stream->Seek({3}, STREAM_SEEK_SET, nullptr), S_OK);
    EXPECT_TRUE(recorder.sax.ParseIStream(stream));
    EXPECT_EQ(recorder.take(), sampleEvents);
}

TEST_F(SaxInput, ThatIsNoStreamFails) {
    EXPECT_FALSE(recorder.sax.ParseIStream(nullptr));
    EXPECT_EQ(words(), "the object is not a stream");
    EXPECT_EQ(recorder.take(), "");
}

TEST_F(SaxInput, OfAStreamLeavesItsReferencesAlone) {
    EnginePtr<IStream> const stream = slowStream(sample, 100);
    EXPECT_TRUE(recorder.sax.ParseIStream(stream));
    stream->AddRef();
    EXPECT_EQ(stream->Release(), 1U);
}

TEST_F(SaxInput, ThatFailsOnTheWayMakesTheParseFail) {
    for (std::size_t after = 0; after != sample.size(); ++after) {
        EXPECT_FALSE(parseBytes(sample, 7, after)) << after;
        EXPECT_TRUE(sampleEvents.starts_with(recorder.take())) << after;
        EXPECT_NE(words().find("the source could not be read"), std::string::npos) << after;
    }
    EXPECT_TRUE(parseBytes(sample));
}

TEST_F(SaxInput, ThatIsCutOffFailsAfterTheEventsUpToThere) {
    std::string const body = "<a b='1'>x<c/>y</a>";
    for (std::size_t size = 0; size != body.size(); ++size) {
        for (std::size_t const step : {std::size_t{1}, never}) {
            EXPECT_FALSE(parseBytes(body.substr(0, size), step)) << size;
            EXPECT_TRUE(
                std::string{"document <a b='1'>x<c></c>y</a> end"}.starts_with(recorder.take()))
                << size;
        }
    }
}

TEST_F(SaxInput, ThatIsMalformedFails) {
    struct Row {
        char const* what;
        std::string bytes;
        char const* events;
        char const* place;
    };

    Row const rows[] = {
        {"empty", "", "", ""},
        {"a wrong end tag", "<a>\n<b></c></a>", "document <a>\n<b>", "2:"},
        {"unterminated", "<a>\n<b>", "document <a>\n<b>", "2:"},
        {"two roots", "<a/>\n<b/>", "document <a></a>", "2:1: "},
        {"text behind the root", "<a/>x", "document <a></a>", "1:5: "},
        {"an attribute twice", "<a b='1' b='2'/>", "document ", "1:"},
        {"an attribute twice by its namespace", "<a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/>",
         "document ", "1:"},
        {"an undeclared prefix", "<p:a/>", "document ", "1:"},
        {"an undeclared prefix within", "<a>x<p:b/></a>", "document <a>x", "1:"},
        {"an unknown entity", "<a>&nbsp;</a>", "document <a>", "1:"},
        {"a control character", "<a>\x01</a>", "document <a>", "1:"},
        {"a reference to one", "<a>&#1;</a>", "document <a>", "1:"},
        {"a bare ampersand", "<a>x & y</a>", "document <a>x ", "1:"},
        {"the end of CDATA in text", "<a>]]></a>", "document <a>", "1:"},
        {"not UTF-8", "<a><b/>\xFF</a>", "document <a><b></b>", "1:"},
        {"not of the encoding", "<?xml version='1.0' encoding='US-ASCII'?><a>\xE4</a>", nullptr,
         "1:"},
        {"an unknown encoding", "<?xml version='1.0' encoding='nonsense'?><a/>", nullptr, "1:"},
        {"a document type", "<!DOCTYPE a><a/>", "document ", "1:"},
        {"a document type with entities", "<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>", "document ",
         "1:"},
    };
    for (Row const& row : rows) {
        for (std::size_t const step : {std::size_t{1}, never}) {
            EXPECT_FALSE(parseBytes(row.bytes, step)) << row.what;
            std::string const told = recorder.take();
            if (row.events != nullptr) {
                EXPECT_EQ(told, row.events) << row.what;
            }
            EXPECT_EQ(told.find("end"), std::string::npos) << row.what;
            std::string const reason = words();
            EXPECT_TRUE(reason.starts_with(row.place)) << row.what << ": " << reason;
            EXPECT_NE(reason, "") << row.what;
        }
    }
    EXPECT_TRUE(parseBytes(sample));
    EXPECT_EQ(recorder.take(), sampleEvents);
}

TEST_F(SaxInput, ThatDoesNotConvertFarIntoFails) {
    for (std::size_t const size : {0U, 100U, 3999U, 5000U, 12000U, 50000U, 300000U}) {
        for (char const* const encoding : {"Shift_JIS", "EUC-JP", "US-ASCII"}) {
            std::string const bytes = "<?xml version='1.0' encoding='" + std::string{encoding} +
                                      "'?><r>" + std::string(size, 'x') + "\x80\xFF</r>";
            EXPECT_FALSE(parseBytes(bytes)) << encoding << size;
            EXPECT_TRUE(words().starts_with("1:")) << encoding << size;
            EXPECT_EQ(recorder.take().find("end"), std::string::npos) << encoding << size;
        }
    }
}

TEST_F(SaxInput, MayBeOfAnyEncoding) {
    struct Row {
        char const* what;
        std::string bytes;
    };

    using namespace std::string_literals;
    Row const rows[] = {
        {"a byte order mark", "\xEF\xBB\xBF<a>\u00E4</a>"},
        {"latin 1", "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>"},
        {"latin 1 misspelt", "<?xml version='1.0' encoding='ISO8859-1'?><a>\xE4</a>"},
        {"UTF-16, little end first", "\xFF\xFE<\0a\0>\0\xE4\0<\0/\0a\0>\0"s},
        {"UTF-16, big end first", "\xFE\xFF\0<\0a\0>\0\xE4\0<\0/\0a\0>"s},
    };
    for (Row const& row : rows) {
        for (std::size_t const step : {std::size_t{1}, std::size_t{2}, std::size_t{7}, never}) {
            EXPECT_TRUE(parseBytes(row.bytes, step)) << row.what << " " << step;
            EXPECT_EQ(recorder.take(), "document <a>\u00E4</a> end") << row.what << " " << step;
        }
    }
    EXPECT_FALSE(parseBytes("\xFF\xFE<\0a\0/\0>\0\n"s)) << "half a character at the end";
}

TEST_F(SaxInput, MayBe256ElementsDeepAndNoMore) {
    auto const nested = [](std::size_t depth) {
        std::string text;
        for (std::size_t i = 0; i != depth; ++i)
            text += "<a>";
        for (std::size_t i = 0; i != depth; ++i)
            text += "</a>";
        return text;
    };
    EXPECT_TRUE(parseBytes(nested(256)));
    EXPECT_EQ(recorder.calls, 2 + 2 * 256U);
    recorder.take();
    EXPECT_FALSE(parseBytes(nested(257)));
    EXPECT_EQ(recorder.calls, 1 + 256U);
    EXPECT_EQ(words(), "1:769: elements are nested more than 256 deep");
    EXPECT_FALSE(parseBytes(nested(100'000)));
}

/// The most memory that is in use during a parse of so many parts.
std::size_t mostMemory(std::size_t parts) {
    std::string part;
    while (part.size() < 4000)
        part += "<item id='1' name='some name'>text &amp; more<![CDATA[cdata]]></item>\n<!-- x -->";
    WXmlSax sax;
    std::size_t most = 0;
    auto measure = [&](WXmlSaxText const*) {
        most = std::max(most, allocatedBytes());
        return true;
    };
    sax.OnEndElement.Bind(measure);
    EXPECT_TRUE(sax.ParseIStream(repeatingStream("<a>", part, parts, "</a>")));
    return most;
}

TEST_F(SaxInput, OfAnySizeTakesNoMoreMemory) {
    std::size_t const few = mostMemory(10);
    EXPECT_GT(few, 0U);
    EXPECT_LT(mostMemory(5000), few + 100'000); // 20 MB
}

} // namespace
