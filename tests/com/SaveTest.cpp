#include "Objects.h"

#include <algorithm>

#include <sys/stat.h>

#include <TibXml/platform/ComObject.h>
#include <TibXml/platform/Stream.h>

#include "TemporaryFolder.h"

namespace tibxml::com::test {

// A stream that takes a few bytes at a time and may fail.
class SlowSink final : public platform::ComObject<ISequentialStream> {
public:
    SlowSink(std::string& bytes, std::size_t step, HRESULT result)
        : bytes_{bytes},
          step_{step},
          result_{result} {}

    HRESULT Read(void*, ULONG, ULONG*) noexcept override { return E_NOTIMPL; }

    HRESULT Write(void const* buffer, ULONG count, ULONG* done) noexcept override {
        *done = static_cast<ULONG>(std::min(std::size_t{count}, step_));
        bytes_.append(static_cast<char const*>(buffer), *done);
        return result_;
    }

private:
    ~SlowSink() override = default;

    std::string& bytes_;
    std::size_t step_;
    HRESULT result_;
};

class Saving : public TemporaryFolder {
protected:
    HRESULT save(IXMLDOMDocument* source, std::string const& to) const {
        std::wstring wide;
        EXPECT_TRUE(platform::appendWide(wide, to));
        return source->save(variantOf(_bstr_t{wide.c_str()}));
    }

    HRESULT saveAs(IXMLDOMDocument* source, char const* name) const {
        return save(source, path(name).string());
    }

    std::filesystem::perms modeOf(char const* name) const {
        return std::filesystem::status(path(name)).permissions();
    }

    Document document = documentOf(L"<a>\u00E4</a>");
    // A comment cannot hold what latin1 lacks.
    Document impossible =
        documentOf(L"<?xml version='1.0' encoding='ISO-8859-1'?><a><!--\u20AC--></a>");
};

TEST_F(Saving, WritesTheDeclaredEncoding) {
    struct Row {
        wchar_t const* xml;
        std::string bytes;
    };

    using namespace std::string_literals;
    Row const rows[] = {
        {L"<a>\u00E4</a>", "<a>\u00E4</a>\n"},
        {L"<?xml version='1.0'?><a/>", "<?xml version=\"1.0\"?>\n<a/>\n"},
        {L"<?xml version='1.0' encoding='UTF-8'?><a>\u00E4</a>",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\u00E4</a>\n"},
        {L"<?xml version='1.0' encoding='ISO-8859-1'?><a b='\u20AC'>\u00E4\u20AC</a>",
         "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<a b=\"&#8364;\">\xE4&#8364;</a>\n"},
        {L"<?xml version='1.0' encoding='UTF-16'?><a/>",
         "\xFF\xFE<\0?\0x\0m\0l\0 \0v\0e\0r\0s\0i\0o\0n\0=\0\"\0"
         "1\0.\0"
         "0\0\"\0 \0e\0n\0c\0o\0d\0"
         "i\0n\0g\0=\0\"\0U\0T\0F\0-\0"
         "1\0"
         "6\0\"\0?\0>\0\n\0<\0a\0/\0>\0\n\0"s},
    };
    for (Row const& row : rows) {
        Document const source = documentOf(row.xml);
        EXPECT_EQ(saveAs(source, "out.xml"), S_OK);
        EXPECT_EQ(contentOf("out.xml"), row.bytes) << utf8(row.xml);
        VARIANT_BOOL done = VARIANT_FALSE;
        Document const again = newDocument();
        EXPECT_EQ(again->load(variantOf(_bstr_t{path("out.xml").wstring().c_str()}), &done), S_OK);
        EXPECT_EQ(xmlOf(again), xmlOf(source));
    }
}

TEST_F(Saving, OfAnEmptyDocumentGivesAnEmptyFile) {
    write("out.xml", "old");
    EXPECT_EQ(saveAs(newDocument(), "out.xml"), S_OK);
    EXPECT_EQ(contentOf("out.xml"), "");
}

TEST_F(Saving, LeavesTheOldFileWhenItFails) {
    write("out.xml", "old");
    EXPECT_EQ(saveAs(impossible, "out.xml"), E_FAIL);
    EXPECT_NE(takeErrorText(), "");
    EXPECT_EQ(contentOf("out.xml"), "old");
    EXPECT_EQ(saveAs(impossible, "new.xml"), E_FAIL);
    EXPECT_EQ(fileCount(), 1) << "nothing is left behind";
}

TEST_F(Saving, LeavesOneFileWhenItSucceeds) {
    EXPECT_EQ(saveAs(document, "out.xml"), S_OK);
    EXPECT_EQ(saveAs(document, "out.xml"), S_OK);
    EXPECT_EQ(fileCount(), 1);
}

TEST_F(Saving, KeepsTheMode) {
    using std::filesystem::perms;
    write("out.xml", "old");
    for (perms const mode : {perms{0600}, perms{0644}, perms{0755}, perms{0444}}) {
        std::filesystem::permissions(path("out.xml"), mode);
        EXPECT_EQ(saveAs(document, "out.xml"), S_OK);
        EXPECT_EQ(modeOf("out.xml"), mode);
    }
}

TEST_F(Saving, GivesNewFilesTheModeOfTheProcess) {
    using std::filesystem::perms;
    mode_t const old = ::umask(0027);
    EXPECT_EQ(saveAs(document, "out.xml"), S_OK);
    ::umask(old);
    EXPECT_EQ(modeOf("out.xml"), perms{0640});
}

TEST_F(Saving, FollowsLinks) {
    write("target.xml", "old");
    std::filesystem::create_symlink("target.xml", path("link.xml"));
    EXPECT_EQ(saveAs(document, "link.xml"), S_OK);
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.xml")));
    EXPECT_EQ(contentOf("target.xml"), "<a>\u00E4</a>\n");
}

TEST_F(Saving, FollowsLinksToWhatIsNotThereYet) {
    std::filesystem::create_symlink("target.xml", path("link.xml"));
    EXPECT_EQ(saveAs(document, "link.xml"), S_OK);
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.xml")));
    EXPECT_EQ(contentOf("target.xml"), "<a>\u00E4</a>\n");
}

TEST_F(Saving, WritesDevicesInPlace) {
    EXPECT_EQ(save(document, "/dev/null"), S_OK);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
    EXPECT_LT(save(document, "/dev/full"), 0);
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
}

TEST_F(Saving, FailsWhereNothingCanBeWritten) {
    EXPECT_LT(save(document, path("").string()), 0) << "a folder";
    EXPECT_LT(saveAs(document, "none/out.xml"), 0);
    EXPECT_LT(save(document, "/proc/out.xml"), 0);
    EXPECT_LT(save(document, ""), 0);
    EXPECT_NE(takeErrorText(), "");
    EXPECT_EQ(fileCount(), 0);
}

TEST_F(Saving, RefusesOtherKinds) {
    EXPECT_EQ(document->save(variantOf(LONG{1})), E_INVALIDARG);
    EXPECT_EQ(document->save(VARIANT{}), E_INVALIDARG);
    EXPECT_EQ(document->save(variantOf(static_cast<IUnknown*>(nullptr))), E_INVALIDARG);
    Ptr<ICreateErrorInfo> noStream;
    CreateErrorInfo(noStream.out());
    EXPECT_EQ(document->save(variantOf(noStream.get())), E_INVALIDARG);
}

TEST_F(Saving, WritesStreamsWhole) {
    for (std::size_t const step : {1U, 3U, 1000U}) {
        std::string bytes;
        Ptr<IUnknown> stream;
        *stream.out() = new SlowSink{bytes, step, S_OK};
        EXPECT_EQ(document->save(variantOf(stream.get())), S_OK);
        EXPECT_EQ(bytes, "<a>\u00E4</a>\n");
    }
}

TEST_F(Saving, TellsWhatTheStreamTold) {
    std::string bytes;
    Ptr<IUnknown> stream;
    *stream.out() = new SlowSink{bytes, 1, E_ACCESSDENIED};
    EXPECT_EQ(document->save(variantOf(stream.get())), E_ACCESSDENIED);
    *stream.out() = new SlowSink{bytes, 0, S_OK};
    EXPECT_EQ(document->save(variantOf(stream.get())), E_FAIL);
    bytes.clear();
    *stream.out() = new SlowSink{bytes, 1000, S_OK};
    EXPECT_EQ(impossible->save(variantOf(stream.get())), E_FAIL);
    EXPECT_EQ(bytes, "") << "nothing was written before the failure";
}

} // namespace tibxml::com::test
