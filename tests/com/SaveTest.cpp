#include "Objects.h"

#include <algorithm>

#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

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

// Whatever the encoding: what was saved is read again, or nothing was saved.
TEST_F(Saving, RefusesEncodingsThatCannotBeReadAgain) {
    struct Row {
        wchar_t const* encoding;
        bool isReadable;
    };

    Row const rows[] = {
        {L"UTF-7", false},       {L"utf-7", false},      {L"SHIFT_JISX0213", true},
        {L"ISO-2022-KR", false}, {L"UTF-32LE", false},   {L"UTF-16LE", true},
        {L"ISO-2022-JP", true},  {L"Shift_JIS", true},   {L"EUC-JP", true},
        {L"GB18030", true},      {L"BIG5", true},        {L"EUC-KR", true},
        {L"windows-1252", true}, {L"ISO-8859-15", true}, {L"KOI8-R", true},
        {L"utf8", true},         {L"iso-8859-1", true},  {L"ISO8859-1", true},
    };
    for (Row const& row : rows) {
        std::wstring const xml = L"<?xml version='1.0' encoding='" + std::wstring{row.encoding} +
                                 L"'?><a>+-\\~<b/>\u3042 x\u00E4</a>";
        Document const source = documentOf(xml.c_str());
        write("out.xml", "old");
        EXPECT_EQ(saveAs(source, "out.xml"), row.isReadable ? S_OK : E_FAIL) << utf8(row.encoding);
        if (!row.isReadable) {
            EXPECT_NE(takeErrorText().find("encoding"), std::string::npos) << utf8(row.encoding);
            EXPECT_EQ(contentOf("out.xml"), "old") << utf8(row.encoding);
            continue;
        }
        VARIANT_BOOL done = VARIANT_FALSE;
        Document const again = newDocument();
        EXPECT_EQ(again->load(variantOf(_bstr_t{path("out.xml").wstring().c_str()}), &done), S_OK);
        EXPECT_EQ(textOf(again), textOf(source)) << utf8(row.encoding);
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

TEST_F(Saving, KeepsTheOwner) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root may give files away";
    write("out.xml", "old");
    ASSERT_EQ(::chown(path("out.xml").c_str(), 1234, 2345), 0);
    ASSERT_EQ(::chmod(path("out.xml").c_str(), 02640), 0);
    EXPECT_EQ(saveAs(document, "out.xml"), S_OK);

    struct stat now {};

    ASSERT_EQ(::stat(path("out.xml").c_str(), &now), 0);
    EXPECT_EQ(now.st_uid, 1234U);
    EXPECT_EQ(now.st_gid, 2345U);
    EXPECT_EQ(now.st_mode & 07777U, 02640U);
    EXPECT_EQ(contentOf("out.xml"), "<a>\u00E4</a>\n");
}

// A user who may write into the folder may save, also over what another one owns.
TEST_F(Saving, NeedsNoRightToGiveFilesAway) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can be somebody else for a while";
    write("out.xml", "old");
    ASSERT_EQ(::chmod(path("out.xml").c_str(), 04755), 0);
    ASSERT_EQ(::chown(path("").c_str(), 1234, 1234), 0);
    ASSERT_EQ(::seteuid(1234), 0);
    HRESULT const result = saveAs(document, "out.xml");
    ASSERT_EQ(::seteuid(0), 0);
    EXPECT_EQ(result, S_OK);

    struct stat now {};

    ASSERT_EQ(::stat(path("out.xml").c_str(), &now), 0);
    EXPECT_EQ(now.st_uid, 1234U);
    EXPECT_EQ(now.st_mode & 07777U, 0755U) << "nothing runs as somebody else now";
    EXPECT_EQ(contentOf("out.xml"), "<a>\u00E4</a>\n");
}

TEST_F(Saving, TakesEveryNameThatTheFileSystemTakes) {
    std::string const longest(255, 'n');
    for (std::string const& name : {longest, std::string{"n"}, std::string{" a\n\\b"}}) {
        for (int i = 0; i != 2; ++i)
            EXPECT_EQ(saveAs(document, name.c_str()), S_OK) << name;
        EXPECT_EQ(contentOf(name), "<a>\u00E4</a>\n");
    }
    EXPECT_EQ(fileCount(), 3);
    EXPECT_LT(saveAs(document, (longest + "n").c_str()), 0);
    EXPECT_EQ(fileCount(), 3) << "nothing is left behind";
}

TEST_F(Saving, TakesPathsAsLongAsTheSystemDoes) {
    std::string folder = path("").string();
    while (folder.size() < PATH_MAX - 300)
        folder += std::string(200, 'd') + "/";
    folder += std::string(PATH_MAX - folder.size() - 3, 'e') + "/";
    ASSERT_TRUE(std::filesystem::create_directories(folder.substr(0, folder.size() - 1)));
    std::string const longest = folder + "f";
    ASSERT_EQ(longest.size(), PATH_MAX - 1U);
    EXPECT_EQ(save(document, longest), S_OK);
    EXPECT_EQ(save(document, longest), S_OK);
    EXPECT_EQ(std::filesystem::file_size(longest), 10U);
}

TEST_F(Saving, LeavesOtherHardLinksTheOldContent) {
    write("out.xml", "old");
    std::filesystem::create_hard_link(path("out.xml"), path("other.xml"));
    EXPECT_EQ(saveAs(document, "out.xml"), S_OK);
    EXPECT_EQ(contentOf("out.xml"), "<a>\u00E4</a>\n");
    EXPECT_EQ(contentOf("other.xml"), "old");
}

TEST_F(Saving, WorksInTheCurrentFolder) {
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(path(""));
    HRESULT const result = save(document, "out.xml");
    std::filesystem::current_path(before);
    EXPECT_EQ(result, S_OK);
    EXPECT_EQ(contentOf("out.xml"), "<a>\u00E4</a>\n");
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
