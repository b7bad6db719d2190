#include "EngineTest.h"
#include "TestStreams.h"

#include <TibXml/platform/Stream.h>
#include <TibXml/tibutils/Stream.h>
#include <TibXml/tibutils/SystemIOFile.h>
#include <TibXml/tibutils/SystemIOPath.h>

#include <fstream>
#include <functional>
#include <new>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace {

EnginePtr<IStream> streamOf(std::string const& bytes) {
    auto const* const begin = reinterpret_cast<BYTE const*>(bytes.data());
    return EnginePtr<IStream>{SHCreateMemStream(begin, static_cast<UINT>(bytes.size())), false};
}

/// A file with some content, as long as the test runs.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string const& bytes)
        : path_{TibUtils::SystemIO::Path::GetTempFileNameW(nullptr, nullptr, nullptr)} {
        std::ofstream{utf8(path_), std::ios::binary} << bytes;
    }

    TemporaryFile(TemporaryFile const&) = delete;
    TemporaryFile& operator=(TemporaryFile const&) = delete;

    ~TemporaryFile() { TibUtils::SystemIO::File::Delete(path_); }

    wchar_t const* path() const { return path_; }

private:
    CString path_;
};

std::string nested(std::size_t levels) {
    std::string text;
    for (std::size_t level = 0; level < levels; ++level)
        text += "<a>";
    for (std::size_t level = 0; level < levels; ++level)
        text += "</a>";
    return text;
}

struct BadInput {
    char const* name;
    std::string bytes;
};

// What no way of loading may take.
std::vector<BadInput> const badInputs = {
    {"nothing", ""},
    {"blanks", " \t\r\n "},
    {"plain text", "text"},
    {"two roots", "<a/><b/>"},
    {"text after the root", "<a/>x"},
    {"text before the root", "x<a/>"},
    {"wrong end tag", "<a></b>"},
    {"crossed tags", "<a><b></a></b>"},
    {"end of input in an element", "<a><b>"},
    {"end of input in a tag", "<a"},
    {"end of input in an attribute", "<a b='c"},
    {"end of input in a comment", "<a><!-- "},
    {"end of input in CDATA", "<a><![CDATA[x"},
    {"end of input in an instruction", "<a><?p x"},
    {"attribute without quotes", "<a b=c/>"},
    {"attribute without value", "<a b/>"},
    {"one attribute twice", "<a b='1' b='2'/>"},
    {"one attribute twice by namespace", "<a xmlns:p='u' xmlns:q='u' p:b='1' q:b='2'/>"},
    {"undeclared prefix", "<p:a/>"},
    {"undeclared prefix of an attribute", "<a p:b='1'/>"},
    {"undeclared entity", "<a>&unknown;</a>"},
    {"bare ampersand", "<a>&</a>"},
    {"less-than in an attribute", "<a b='<'/>"},
    {"reference to a forbidden character", "<a>&#1;</a>"},
    {"forbidden character", "<a>\x01</a>"},
    {"two hyphens in a comment", "<a><!-- -- --></a>"},
    {"end of CDATA in text", "<a>]]></a>"},
    {"declaration after a blank", " <?xml version='1.0'?><a/>"},
    {"document type", "<!DOCTYPE a><a/>"},
    {"document type with entities", "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>"},
    {"document type naming a file", "<!DOCTYPE a SYSTEM 'file:///etc/passwd'><a/>"},
    {"257 levels", nested(257)},
    {"200,000 levels", nested(200000)},
};

// Bytes that a string cannot even hold.
std::vector<BadInput> const badBytes = {
    {"stray continuation byte", "<a>\x80</a>"},
    {"overlong character", "<a>\xC0\xAF</a>"},
    {"surrogate in UTF-8", "<a>\xED\xA0\x80</a>"},
    {"cut short character", "<a>\xE2\x82</a>"},
    {"unknown encoding", "<?xml version='1.0' encoding='no-such'?><a/>"},
    {"NUL in the middle", std::string{"<a>\0</a>", 8}},
    {"odd bytes of UTF-16", std::string{"\xFF\xFE<\0a\0/\0>", 9}},
};

void expectFailedLoad(WXmlDoc const& document, char const* name) {
    EXPECT_FALSE(document.IsLoaded()) << name;
    EXPECT_TRUE(document.SaveToString().IsEmpty()) << name;
    EXPECT_FALSE(document.GetRootNode().IsValid()) << name;
    WXmlNodeList nodes;
    EXPECT_FALSE(document.GetNodes(L"//node()", nodes)) << name;
}

void loadBytes(BadInput const& bad) {
    WXmlDoc document = loaded(L"<old/>");
    EXPECT_FALSE(document.Load(streamOf(bad.bytes))) << bad.name;
    expectFailedLoad(document, bad.name);
    TemporaryFile const file{bad.bytes};
    WXmlDoc other = loaded(L"<old/>");
    EXPECT_FALSE(other.Load(file.path())) << bad.name;
    expectFailedLoad(other, bad.name);
}

TEST(DocumentLoading, BadInputFailsAndLeavesADocumentWithoutRoot) {
    for (BadInput const& bad : badInputs) {
        WXmlDoc document = loaded(L"<old/>");
        EXPECT_FALSE(document.LoadFromString(TibUtils::DataEncoding::Utf8Decode(bad.bytes)))
            << bad.name;
        expectFailedLoad(document, bad.name);
        loadBytes(bad);
    }
}

TEST(DocumentLoading, BadBytesFailAndLeaveADocumentWithoutRoot) {
    for (BadInput const& bad : badBytes) {
        loadBytes(bad);
    }
}

TEST(DocumentLoading, EveryPrefixOfADocumentFails) {
    std::string const whole = "<?xml version='1.0'?><a b='&lt;'><![CDATA[x]]><!--c-->&#65;</a>";
    for (std::size_t length = 0; length < whole.size(); ++length) {
        WXmlDoc document;
        EXPECT_FALSE(document.Load(streamOf(whole.substr(0, length)))) << length;
        EXPECT_FALSE(document.IsLoaded()) << length;
    }
    WXmlDoc document;
    EXPECT_TRUE(document.Load(streamOf(whole)));
}

TEST(DocumentLoading, CharactersThatAreNoneInAStringFail) {
    for (wchar_t const* const text : {L"<a>\xD800</a>", L"<a>\xDFFF</a>", L"<a>\xFFFE</a>"}) {
        WXmlDoc document = loaded(L"<old/>");
        EXPECT_FALSE(document.LoadFromString(text));
        EXPECT_FALSE(document.IsLoaded());
    }
}

TEST(DocumentLoading, TheDeepestDocumentLoads) {
    WXmlDoc document;
    EXPECT_TRUE(document.Load(streamOf(nested(256))));
    EXPECT_TRUE(document.IsLoaded());
}

TEST(DocumentLoading, FromAString) {
    WXmlDoc document;
    EXPECT_TRUE(document.LoadFromString(L"<one/>"));
    EXPECT_TRUE(document.IsLoaded());
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "one");
    EXPECT_EQ(utf8(WXmlDoc::CreateFromString(L"<one/>").GetRootNode().GetName()), "one");
}

TEST(DocumentLoading, AStringsDeclaredEncodingDoesNotCount) {
    WXmlDoc const document = loaded(L"<?xml version='1.0' encoding='ISO-8859-1'?><a>\x20AC</a>");
    EXPECT_EQ(utf8(document.GetRootNode().Value().GetString()), "\xE2\x82\xAC");
}

TEST(DocumentLoading, FromAStreamFromWhereItStands) {
    auto const stream = streamOf("junk<one/>");
    LARGE_INTEGER const afterJunk{4};
    ASSERT_EQ(stream->Seek(afterJunk, STREAM_SEEK_SET, nullptr), S_OK);
    WXmlDoc document;
    EXPECT_TRUE(document.Load(stream));
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "one");
    EXPECT_TRUE(WXmlDoc::CreateFromStream(streamOf("<one/>")).IsLoaded());
}

TEST(DocumentLoading, KeepsNoReferenceToTheStream) {
    auto const stream = streamOf("<one/>");
    WXmlDoc document;
    EXPECT_TRUE(document.Load(stream));
    EXPECT_EQ(stream->AddRef(), 2U);
    stream->Release();
}

TEST(DocumentLoading, ANullStreamKeepsTheOldContent) {
    WXmlDoc document = loaded(L"<old/>");
    WXmlDoc const copy = document;
    EXPECT_FALSE(document.Load(static_cast<IStream*>(nullptr)));
    EXPECT_TRUE(document == copy);
    EXPECT_FALSE(document.Load(TibUtils::Stream{}));
    EXPECT_TRUE(document == copy);
    EXPECT_FALSE(WXmlDoc::CreateFromStream(nullptr).IsLoaded());
}

TEST(DocumentLoading, FromAStreamThatThrowsIsFalse) {
    std::function<void()> const throwers[] = {
        [] { throw 1; }, [] { throw std::runtime_error{"the line is down"}; },
        [] { throw std::bad_alloc{}; }, [] { _com_issue_error(E_ABORT); }};
    for (auto const& thrown : throwers) {
        for (char const* const bytes : {"", "<a>", "<a>text</a>"}) {
            WXmlDoc document = loaded(L"<old/>");
            EXPECT_FALSE(document.Load(throwingStream(bytes, thrown))) << bytes;
            EXPECT_FALSE(document.IsLoaded()) << bytes;
            EXPECT_TRUE(document.LoadFromString(L"<new/>")) << bytes;
        }
    }
}

TEST(DocumentLoading, FromAStreamOfTheUtilityLibrary) {
    std::string const text = "<one/>";
    auto stream = TibUtils::Stream::FromMemory(text.data(), text.size());
    EnginePtr<IStream> const under{static_cast<IStream*>(stream)};
    WXmlDoc document;
    EXPECT_TRUE(document.Load(std::move(stream)));
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "one");
    EXPECT_EQ(under->AddRef(), 2U) << "the stream was let go before returning";
    under->Release();
}

TEST(DocumentLoading, FromMemoryWithoutACopyOfIt) {
    std::string text = "<one>a&amp;b</one>";
    WXmlDoc document;
    EXPECT_TRUE(document.Load(TibUtils::Stream::OverMemory(text.data(), text.size())));
    text.assign(text.size(), '?');
    EXPECT_EQ(utf8(document.GetRootNode().Value().GetString()), "a&b");
    EXPECT_FALSE(document.Load(TibUtils::Stream::OverMemory(nullptr, 0)));
    EXPECT_FALSE(document.IsLoaded());
}

TEST(DocumentLoading, FromMemoryInEveryEncoding) {
    std::string const documents[] = {"\xEF\xBB\xBF<a>\xC3\xA4</a>",
                                     "<?xml version='1.0' encoding='UTF-8'?><a>\xC3\xA4</a>",
                                     "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>",
                                     std::string{"\xFF\xFE<\0a\0>\0\xE4\0<\0/\0a\0>\0", 18}};
    for (std::string const& text : documents) {
        WXmlDoc document;
        EXPECT_TRUE(document.Load(TibUtils::Stream::OverMemory(text.data(), text.size())));
        EXPECT_EQ(utf8(document.GetRootNode().Value().GetString()), "\xC3\xA4");
    }
}

TEST(DocumentLoading, FromMemoryReadsFromThePositionToTheEnd) {
    std::string const text = "junk<one/>";
    auto stream = TibUtils::Stream::OverMemory(text.data(), text.size());
    EnginePtr<IStream> const under{static_cast<IStream*>(stream)};
    ASSERT_EQ(under->Seek({4}, STREAM_SEEK_SET, nullptr), S_OK);
    WXmlDoc document;
    EXPECT_TRUE(document.Load(stream));
    EXPECT_EQ(utf8(document.GetRootNode().GetName()), "one");
    ULARGE_INTEGER position{};
    ASSERT_EQ(under->Seek({0}, STREAM_SEEK_CUR, &position), S_OK);
    EXPECT_EQ(position.QuadPart, text.size());
    EXPECT_FALSE(document.Load(stream)) << "nothing is left";
}

TEST(DocumentLoading, FromAFile) {
    TemporaryFile const file{"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4</a>"};
    WXmlDoc document;
    EXPECT_TRUE(document.Load(file.path()));
    EXPECT_EQ(utf8(document.GetRootNode().Value().GetString()), "\xC3\xA4");
    EXPECT_TRUE(WXmlDoc::CreateFromFile(file.path()).IsLoaded());
}

TEST(DocumentLoading, AFileThatIsMissingOrNotOneFailsAndDropsTheOldContent) {
    for (wchar_t const* const path : {L"/no/such/file.xml", L"/", L"", L"no-such.xml"}) {
        WXmlDoc document = loaded(L"<old/>");
        EXPECT_FALSE(document.Load(path)) << utf8(path);
        expectFailedLoad(document, "no file");
        EXPECT_FALSE(WXmlDoc::CreateFromFile(path).IsLoaded());
    }
}

TEST(DocumentLoading, NullTextsAndPathsAreFailedLoads) {
    WXmlDoc document = loaded(L"<old/>");
    EXPECT_FALSE(document.LoadFromString(nullptr));
    expectFailedLoad(document, "null text");
    WXmlDoc other = loaded(L"<old/>");
    EXPECT_FALSE(other.Load(static_cast<wchar_t const*>(nullptr)));
    expectFailedLoad(other, "null path");
    EXPECT_FALSE(WXmlDoc::CreateFromString(nullptr).IsLoaded());
    EXPECT_FALSE(WXmlDoc::CreateFromFile(nullptr).IsLoaded());
}

TEST(DocumentLoading, WhiteSpaceIsKeptOnlyOnDemand) {
    WXmlDoc keeping{true};
    WXmlDoc dropping{false};
    ASSERT_TRUE(keeping.LoadFromString(L"<a> <b/> </a>"));
    ASSERT_TRUE(dropping.LoadFromString(L"<a> <b/> </a>"));
    EXPECT_EQ(keeping.GetRootNode().GetNumChildren(), 3);
    EXPECT_EQ(dropping.GetRootNode().GetNumChildren(), 1);
    ASSERT_TRUE(keeping.Load(streamOf("<a> <b/> </a>"))) << "every load keeps it";
    EXPECT_EQ(keeping.GetRootNode().GetNumChildren(), 3);
}

TEST(DocumentLoading, EveryLoadMakesANewDocument) {
    WXmlDoc document = loaded(L"<a/>");
    WXmlNode const old = document.GetRootNode();
    ASSERT_TRUE(document.LoadFromString(L"<a/>"));
    EXPECT_TRUE(old != document.GetRootNode());
    EXPECT_EQ(utf8(old.GetName()), "a") << "a node of the old one stays usable";
}

struct Trouble {
    LONG code;
    LONG line;
    LONG column;

    friend bool operator==(Trouble const&, Trouble const&) = default;
};

void PrintTo(Trouble const& trouble, std::ostream* out) {
    *out << std::hex << static_cast<std::uint32_t>(trouble.code) << std::dec << " in "
         << trouble.line << ":" << trouble.column;
}

// What the engine keeps about the last load of a handle. It has words for every error, and none
// without one.
Trouble troubleOf(WXmlDoc const& document) {
    EnginePtr<IXMLDOMParseError> error;
    Trouble trouble{};
    _bstr_t reason;
    EXPECT_EQ(document.EngineDocument()->get_parseError(error.GetAddress()), S_OK);
    EXPECT_EQ(error->get_errorCode(&trouble.code), S_OK);
    EXPECT_EQ(error->get_line(&trouble.line), S_OK);
    EXPECT_EQ(error->get_linepos(&trouble.column), S_OK);
    EXPECT_EQ(error->get_reason(reason.GetAddress()), S_OK);
    EXPECT_EQ(reason.length() != 0, trouble.code != 0);
    return trouble;
}

TEST(DocumentLoading, AFailedLoadKeepsItsReasonInTheEngineDocument) {
    std::string const broken = "<a>\n<b></a>";
    TemporaryFile const file{broken};
    // The end tag in the second line has another name than the start tag.
    Trouble const wrongEndTag{static_cast<LONG>(0xC00CE007), 2, 8};
    WXmlDoc document = loaded(L"<old/>");
    std::pair<char const*, std::function<bool()>> const ways[] = {
        {"text", [&] { return document.LoadFromString(L"<a>\n<b></a>"); }},
        {"stream", [&] { return document.Load(streamOf(broken)); }},
        {"file", [&] { return document.Load(file.path()); }}};
    for (auto const& [name, load] : ways) {
        EXPECT_FALSE(load()) << name;
        EXPECT_FALSE(document.IsLoaded()) << name;
        EXPECT_EQ(troubleOf(document), wrongEndTag) << name;
        EXPECT_TRUE(document.LoadFromString(L"<a/>")) << name;
        EXPECT_EQ(troubleOf(document), Trouble{}) << "after a load that worked";
    }
}

TEST(DocumentLoading, ASourceThatCannotBeReadIsAReason) {
    constexpr auto unreadable = static_cast<LONG>(0xC00CE587);
    WXmlDoc document;
    EXPECT_FALSE(document.Load(L"/no/such/file.xml"));
    EXPECT_EQ(troubleOf(document), (Trouble{unreadable, 0, 0}));
    EXPECT_FALSE(document.Load(slowStream("<a>\n", 9, 4)));
    EXPECT_EQ(troubleOf(document), (Trouble{unreadable, 2, 1})) << "where the reading stopped";
}

} // namespace
