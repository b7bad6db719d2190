#include "EngineTest.h"

#include <TibXml/platform/Stream.h>
#include <TibXml/tibutils/SystemIOFile.h>
#include <TibXml/tibutils/SystemIOPath.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>

namespace {

namespace File = TibUtils::SystemIO::File;

std::string bytesOf(IStream* stream) {
    LARGE_INTEGER const start{0};
    stream->Seek(start, STREAM_SEEK_SET, nullptr);
    std::string bytes(4096, '\0');
    ULONG read = 0;
    stream->Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read);
    bytes.resize(read);
    return bytes;
}

std::string contentOf(CString const& path) {
    std::ifstream file{utf8(path), std::ios::binary};
    return {std::istreambuf_iterator<char>{file}, {}};
}

/// A path for a file that a test may write.
class FreePath {
public:
    FreePath() = default;
    FreePath(FreePath const&) = delete;
    FreePath& operator=(FreePath const&) = delete;

    ~FreePath() { File::Delete(path); }

    CString const path = TibUtils::SystemIO::Path::GetTempFileNameW(nullptr, nullptr, nullptr);
};

TEST(DocumentSaving, ToAFileThatLoadsAgain) {
    FreePath const file;
    EXPECT_TRUE(loaded(L"<a b=\"1\">\x20AC</a>").Save(file.path));
    EXPECT_EQ(contentOf(file.path), "<a b=\"1\">\xE2\x82\xAC</a>\n");
    EXPECT_TRUE(WXmlDoc::CreateFromFile(file.path).IsLoaded());
}

TEST(DocumentSaving, InTheDeclaredEncoding) {
    FreePath const file;
    EXPECT_TRUE(
        loaded(L"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xE4</a>").Save(file.path));
    EXPECT_NE(contentOf(file.path).find("<a>\xE4</a>"), std::string::npos);
}

TEST(DocumentSaving, ToAStream) {
    EnginePtr<IStream> const stream{SHCreateMemStream(nullptr, 0), false};
    EXPECT_TRUE(loaded(L"<a/>").Save(stream));
    EXPECT_EQ(bytesOf(stream), "<a/>\n");
}

TEST(DocumentSaving, AnEmptyHandleSavesNothing) {
    FreePath const file;
    File::Delete(file.path);
    WXmlDoc const empty;
    EXPECT_FALSE(empty.Save(file.path));
    EXPECT_FALSE(File::Exists(file.path));
    EnginePtr<IStream> const stream{SHCreateMemStream(nullptr, 0), false};
    EXPECT_FALSE(empty.Save(stream));
    EXPECT_EQ(bytesOf(stream), "");
}

TEST(DocumentSaving, WhereItCannotGo) {
    WXmlDoc const document = loaded(L"<a/>");
    EXPECT_FALSE(document.Save(L"/no/such/folder/file.xml"));
    EXPECT_FALSE(document.Save(L""));
    EXPECT_FALSE(document.Save(static_cast<wchar_t const*>(nullptr)));
    EXPECT_FALSE(document.Save(static_cast<IStream*>(nullptr)));
    EXPECT_TRUE(document.IsLoaded());
}

TEST(DocumentSaving, ADocumentWithoutRootGivesAnEmptyFile) {
    FreePath const file;
    WXmlDoc document;
    EXPECT_FALSE(document.LoadFromString(L"<a"));
    EXPECT_TRUE(document.Save(file.path));
    EXPECT_EQ(contentOf(file.path), "");
}

TEST(DocumentSaving, ABackupBringsTheContentBackAsOftenAsWanted) {
    WXmlDoc document = loaded(L"<a><b>old</b></a>");
    std::unique_ptr<WDataBackup> const backup{document.Backup()};
    ASSERT_NE(backup, nullptr);
    for (int round = 0; round < 2; ++round) {
        nodeAt(document, L"b").Value().SetString(L"new");
        WXmlDoc const copy = document;
        document.Restore(backup.get());
        EXPECT_EQ(utf8(nodeAt(document, L"b").Value().GetString()), "old");
        EXPECT_EQ(utf8(nodeAt(copy, L"b").Value().GetString()), "new") << "copies keep theirs";
    }
}

TEST(DocumentSaving, ABackupThroughTheInterface) {
    WXmlDoc document = loaded(L"<a/>");
    IBackupRestorable& restorable = document;
    std::unique_ptr<WDataBackup> const backup{restorable.Backup()};
    document.ReleaseDocument();
    restorable.Restore(backup.get());
    EXPECT_TRUE(document.IsLoaded());
}

TEST(DocumentSaving, ABackupOfNothingRestoresNothing) {
    WXmlDoc document;
    std::unique_ptr<WDataBackup> const backup{document.Backup()};
    ASSERT_NE(backup, nullptr);
    ASSERT_TRUE(document.LoadFromString(L"<a/>"));
    document.Restore(backup.get());
    EXPECT_FALSE(document.IsLoaded());
    EXPECT_FALSE(document.GetRootNode().IsValid());
}

// Sends temporary files to a new folder, which shows what files there are.
class TemporaryFolder {
public:
    TemporaryFolder() {
        File::Delete(place_.path);
        std::filesystem::create_directory(folder());
        setenv("TMPDIR", folder().c_str(), 1); // NOLINT(concurrency-mt-unsafe): one thread
    }

    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;

    ~TemporaryFolder() {
        unsetenv("TMPDIR"); // NOLINT(concurrency-mt-unsafe): one thread
        std::filesystem::remove_all(folder());
    }

    bool isEmpty() const { return std::filesystem::is_empty(folder()); }

private:
    std::string folder() const { return utf8(place_.path); }

    FreePath place_;
};

TEST(DocumentSaving, DeletingABackupRemovesItsFile) {
    TemporaryFolder const folder;
    WXmlDoc document = loaded(L"<a/>");
    std::unique_ptr<WDataBackup> backup{document.Backup()};
    EXPECT_FALSE(folder.isEmpty());
    backup.reset();
    EXPECT_TRUE(folder.isEmpty());
}

} // namespace
