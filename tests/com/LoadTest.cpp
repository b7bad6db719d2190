#include "Objects.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Stream.h>

#include "TemporaryFolder.h"

namespace tibxml::com::test {

// A stream that gives a few bytes at a time and may fail.
class SlowStream final : public platform::ComObject<ISequentialStream> {
public:
    SlowStream(std::string bytes, std::size_t step, std::size_t failAfter)
        : bytes_{std::move(bytes)},
          step_{step},
          failAfter_{failAfter} {}

    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept override {
        if (position_ >= failAfter_) return E_FAIL;
        *done =
            static_cast<ULONG>(std::min({std::size_t{count}, step_, bytes_.size() - position_}));
        std::memcpy(buffer, bytes_.data() + position_, *done);
        position_ += *done;
        return *done == count ? S_OK : S_FALSE;
    }

    HRESULT Write(void const*, ULONG, ULONG*) noexcept override { return E_NOTIMPL; }

private:
    ~SlowStream() override = default;

    std::string bytes_;
    std::size_t step_;
    std::size_t failAfter_;
    std::size_t position_ = 0;
};

// A stream that does something else first whenever it is read.
class MeddlingStream final : public platform::ComObject<ISequentialStream> {
public:
    MeddlingStream(std::string bytes, std::function<void()> meddle)
        : rest_{std::move(bytes)},
          meddle_{std::move(meddle)} {}

    HRESULT Read(void* buffer, ULONG count, ULONG* done) noexcept override {
        meddle_();
        *done = static_cast<ULONG>(std::min({std::size_t{count}, std::size_t{2000}, rest_.size()}));
        std::memcpy(buffer, rest_.data(), *done);
        rest_.erase(0, *done);
        return S_OK;
    }

    HRESULT Write(void const*, ULONG, ULONG*) noexcept override { return E_NOTIMPL; }

private:
    ~MeddlingStream() override = default;

    std::string rest_;
    std::function<void()> meddle_;
};

class Loading : public TemporaryFolder {
protected:
    bool load(VARIANT source) {
        VARIANT_BOOL done = VARIANT_TRUE;
        HRESULT const result = document->load(source, &done);
        EXPECT_EQ(result, done == VARIANT_TRUE ? S_OK : S_FALSE);
        return done == VARIANT_TRUE;
    }

    bool loadPath(std::string const& path) {
        std::wstring wide;
        EXPECT_TRUE(platform::appendWide(wide, path));
        return load(variantOf(_bstr_t{wide.c_str()}));
    }

    bool loadStream(std::string const& bytes, std::size_t step, std::size_t failAfter = 1U << 30) {
        Ptr<IUnknown> stream;
        *stream.out() = new SlowStream{bytes, step, failAfter};
        return load(variantOf(stream.get()));
    }

    bool loadMeddling(std::string const& bytes, std::function<void()> meddle) {
        Ptr<IUnknown> stream;
        *stream.out() = new MeddlingStream{bytes, std::move(meddle)};
        return load(variantOf(stream.get()));
    }

    LONG errorCode() {
        Ptr<IXMLDOMParseError> error;
        LONG code = -1;
        EXPECT_EQ(document->get_parseError(error.out()), S_OK);
        EXPECT_EQ(error->get_errorCode(&code), S_OK);
        return code;
    }

    void expectEmpty(char const* what) {
        EXPECT_EQ(xmlOf(document), "") << what;
        EXPECT_EQ(document->get_documentElement(Ptr<IXMLDOMElement>{}.out()), S_FALSE) << what;
        EXPECT_NE(errorCode(), 0) << what;
    }

    Document document = documentOf(L"<old/>");
};

TEST_F(Loading, OfTextTakesItUpToTheFirstNul) {
    wchar_t const text[] = L"<a/>\0<b";
    _bstr_t const whole{SysAllocStringLen(text, 7), false};
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(document->loadXML(whole, &done), S_OK);
    EXPECT_EQ(xmlOf(document), "<a/>\n");
    EXPECT_TRUE(loadText(document, L"\uFEFF<b/>"));
    EXPECT_EQ(xmlOf(document), "<b/>\n");
    EXPECT_TRUE(
        loadText(document, L"<?xml version='1.0' encoding='latin1'?><\u00E4>\U0001F600</\u00E4>"));
    EXPECT_EQ(nameOf(nodeAt(document, L"*")), "\u00E4");
}

TEST_F(Loading, OfBadTextLeavesTheDocumentEmpty) {
    wchar_t const surrogate[] = {L'<', static_cast<wchar_t>(0xD800), L'/', L'>', 0};
    wchar_t const beyond[] = {L'<', L'a', L'>', static_cast<wchar_t>(0x110000), 0};
    wchar_t const* const rows[] = {
        nullptr, L"",       L" \n", L"<a>", L" <?xml version='1.0'?><a/>", L"<!DOCTYPE a><a/>",
        L"text", surrogate, beyond};
    for (wchar_t const* const text : rows) {
        EXPECT_TRUE(loadText(document, L"<old/>"));
        VARIANT_BOOL done = VARIANT_TRUE;
        EXPECT_EQ(document->loadXML(_bstr_t{text}, &done), S_FALSE);
        EXPECT_EQ(done, VARIANT_FALSE);
        expectEmpty("bad text");
    }
}

TEST_F(Loading, OfAFileTriesEachFormOfItsName) {
    write("plain.xml", "<plain/>");
    write("with blank.xml", "<blank/>");
    write("with%20percent.xml", "<percent/>");
    write("\u00E4.xml", "<umlaut/>");

    struct Row {
        std::string path;
        char const* root;
    };

    std::string const folder = path("").string();
    Row const rows[] = {
        {folder + "plain.xml", "plain"},
        {"file://" + folder + "plain.xml", "plain"},
        {"file://localhost" + folder + "plain.xml", "plain"},
        {"file:" + folder + "plain.xml", "plain"},
        {folder + "with blank.xml", "blank"},
        {"file://" + folder + "with%20blank.xml", "blank"},
        {folder + "with%20blank.xml", "blank"},
        {folder + "with%20percent.xml", "percent"},
        {folder + "\u00E4.xml", "umlaut"},
        {"file://" + folder + "%C3%A4.xml", "umlaut"},
    };
    for (Row const& row : rows) {
        EXPECT_TRUE(loadPath(row.path)) << row.path;
        EXPECT_EQ(nameOf(nodeAt(document, L"*")), row.root) << row.path;
        EXPECT_EQ(errorCode(), 0);
    }
}

TEST_F(Loading, OfWhatIsNoDocumentLeavesTheDocumentEmpty) {
    write("broken.xml", "<a>");
    write("empty.xml", "");
    std::string const folder = path("").string();
    for (char const* const name :
         {"broken.xml", "empty.xml", "missing.xml", "", "none/x.xml", "%", "%zz"}) {
        EXPECT_TRUE(loadText(document, L"<old/>"));
        EXPECT_FALSE(loadPath(folder + name)) << name;
        expectEmpty(name);
    }
    for (char const* const name :
         {"", "http://localhost/x.xml", "file:", "file://elsewhere/x.xml"}) {
        EXPECT_FALSE(loadPath(name));
        expectEmpty(name);
    }
}

TEST_F(Loading, OfAStreamTakesTheRestOfIt) {
    std::string const bytes = "junk<a>text</a>";
    Ptr<IStream> stream;
    *stream.out() = SHCreateMemStream(reinterpret_cast<BYTE const*>(bytes.data()),
                                      static_cast<UINT>(bytes.size()));
    LARGE_INTEGER start{};
    start.QuadPart = 4;
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    EXPECT_TRUE(load(variantOf(stream.get())));
    EXPECT_EQ(xmlOf(document), "<a>text</a>\n");
    EXPECT_FALSE(load(variantOf(stream.get()))) << "nothing is left";
}

TEST_F(Loading, OfASlowStreamIsTheSame) {
    std::string const bytes = "<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE4\r\n</a>";
    for (std::size_t const step : {1U, 2U, 7U, 1000U}) {
        EXPECT_TRUE(loadStream(bytes, step));
        EXPECT_EQ(textOf(document), "\u00E4\n");
    }
}

TEST_F(Loading, OfAFailingStreamFails) {
    for (std::size_t const after : {0U, 1U, 5U}) {
        EXPECT_FALSE(loadStream("<a>text</a>", 3, after));
        expectEmpty("failing stream");
    }
    Ptr<ICreateErrorInfo> info;
    CreateErrorInfo(info.out());
    EXPECT_FALSE(load(variantOf(info.get())));
    EXPECT_FALSE(load(variantOf(static_cast<IUnknown*>(nullptr))));
    expectEmpty("no stream");
}

TEST_F(Loading, RefusesOtherKindsAndChangesNothing) {
    VARIANT_BOOL done = VARIANT_TRUE;
    EXPECT_EQ(document->load(variantOf(LONG{1}), &done), E_INVALIDARG);
    EXPECT_EQ(done, VARIANT_FALSE);
    EXPECT_EQ(document->load(VARIANT{}, &done), E_INVALIDARG);
    EXPECT_EQ(xmlOf(document), "<old/>\n");
}

TEST_F(Loading, TellsWhyItFailed) {
    write("broken.xml", "<a>\n\u00E4</b>");
    std::string const name = path("broken.xml").string();
    EXPECT_FALSE(loadPath(name));
    Ptr<IXMLDOMParseError> error;
    ASSERT_EQ(document->get_parseError(error.out()), S_OK);
    LONG number = 0;
    EXPECT_EQ(error->get_line(&number), S_OK);
    EXPECT_EQ(number, 2);
    EXPECT_EQ(error->get_linepos(&number), S_OK);
    EXPECT_EQ(number, 6);
    EXPECT_EQ(error->get_filepos(&number), S_OK);
    EXPECT_EQ(number, 10);
    _bstr_t text;
    EXPECT_EQ(error->get_srcText(text.GetAddress()), S_OK);
    EXPECT_EQ(utf8(text), "\u00E4</b>");
    EXPECT_EQ(error->get_url(text.GetAddress()), S_OK);
    EXPECT_EQ(utf8(text), name);
    EXPECT_EQ(error->get_reason(text.GetAddress()), S_OK);
    EXPECT_NE(utf8(text), "");
    EXPECT_TRUE(loadText(document, L"<a/>"));
    EXPECT_EQ(error->get_line(&number), S_OK);
    EXPECT_EQ(number, 2) << "a snapshot";
    EXPECT_EQ(errorCode(), 0);
}

TEST_F(Loading, RefusesDocumentTypes) {
    EXPECT_FALSE(loadText(document, L"<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>"));
    EXPECT_EQ(static_cast<std::uint32_t>(errorCode()), 0xC00CE584U);
}

TEST_F(Loading, ForgetsTheErrorAfterSuccess) {
    EXPECT_FALSE(loadText(document, L"<a"));
    EXPECT_TRUE(loadText(document, L"<a/>"));
    Ptr<IXMLDOMParseError> error;
    document->get_parseError(error.out());
    _bstr_t text;
    error->get_reason(text.GetAddress());
    EXPECT_EQ(utf8(text), "");
    error->get_url(text.GetAddress());
    EXPECT_EQ(utf8(text), "");
}

TEST_F(Loading, ObeysWhiteSpacePreservation) {
    EXPECT_EQ(document->put_preserveWhiteSpace(VARIANT_TRUE), S_OK);
    for (int i = 0; i != 2; ++i) {
        EXPECT_TRUE(loadText(document, L"<a> </a>"));
        EXPECT_EQ(textOf(document), " ");
    }
    VARIANT_BOOL preserves = VARIANT_FALSE;
    EXPECT_EQ(document->get_preserveWhiteSpace(&preserves), S_OK);
    EXPECT_EQ(preserves, VARIANT_TRUE);
    document->put_preserveWhiteSpace(VARIANT_FALSE);
    EXPECT_TRUE(loadText(document, L"<a> </a>"));
    EXPECT_EQ(textOf(document), "");
}

// What a caller's stream does with the document while it is being read, in so many pieces that the
// reader has begun before the last one.
std::string const meddledWith =
    "<a>" + std::string(20000, ' ') + "<b/>" + std::string(20000, 'x') + "</a>";
std::string const meddledTree = "<a>\n\t<b/>" + std::string(20000, 'x') + "</a>\n";

TEST_F(Loading, ShowsNothingOfADocumentBeforeItIsRead) {
    std::string seen;
    EXPECT_TRUE(loadMeddling(meddledWith, [&] { seen += xmlOf(document); }));
    EXPECT_EQ(seen, "");
    EXPECT_EQ(xmlOf(document), meddledTree);
}

TEST_F(Loading, DropsWhatWasPutIntoTheDocumentMeanwhile) {
    EXPECT_TRUE(loadMeddling(meddledWith, [&] {
        document->putref_documentElement(nullptr);
        Ptr<IXMLDOMNode> node;
        document->createNode(variantOf(LONG{NODE_ELEMENT}), _bstr_t{L"meanwhile"}, nullptr,
                             node.out());
        document->appendChild(node.get(), nullptr);
    }));
    EXPECT_EQ(xmlOf(document), meddledTree);
}

TEST_F(Loading, EndsAsTheOuterOneOfTwoLoads) {
    EXPECT_TRUE(loadMeddling(meddledWith, [&] { loadText(document, L"<inner/>"); }));
    EXPECT_EQ(xmlOf(document), meddledTree);
    EXPECT_EQ(errorCode(), 0);
    EXPECT_FALSE(loadMeddling("<a><b></a>", [&] { loadText(document, L"<inner/>"); }));
    expectEmpty("the inner one is gone as well");
}

} // namespace tibxml::com::test
