#include <TibXml/tibutils/SystemIOFile.h>

#include <gtest/gtest.h>

#include "TemporaryFolder.h"

#include <functional>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
namespace File = TibUtils::SystemIO::File;

class SystemIOFile : public InTemporaryFolder {};

struct Row {
    char const* name;
    bool exists;
    bool probed;
    bool deleted;
};

TEST_F(SystemIOFile, AnswersForEveryKindOfEntry) {
    write("file", "content");
    write("empty", "");
    write("gr\xC3\xBC\xC3\x9F", "letters beyond ASCII");
    fs::create_directory(path("folder"));
    fs::create_symlink("file", path("link"));
    fs::create_symlink("nothing here", path("loose link"));
    fs::create_symlink("folder", path("link to folder"));
    for (Row const& row : {
             Row{"link", true, true, true},
             Row{"file", true, true, true},
             Row{"empty", true, true, true},
             Row{"gr\xC3\xBC\xC3\x9F", true, true, true},
             Row{"folder", false, false, false},
             Row{"link to folder", false, false, true},
             Row{"new", false, true, true},
             Row{"no folder/new", false, false, false},
             Row{"file/below", false, false, false},
         }) {
        std::wstring const file = widePath(row.name);
        EXPECT_EQ(File::Exists(file.c_str()), row.exists) << row.name;
        EXPECT_EQ(File::ProbeCreateFile(file.c_str()), row.probed) << row.name;
        EXPECT_EQ(File::Exists(file.c_str()), row.probed) << row.name;
        EXPECT_EQ(File::Delete(file.c_str()), row.deleted) << row.name;
        EXPECT_FALSE(File::Exists(file.c_str())) << row.name;
        EXPECT_FALSE(File::Delete(file.c_str())) << row.name;
        if (std::string(row.name) == "link") {
            EXPECT_TRUE(fs::exists(path("file"))) << "a link is deleted, not its target";
        }
    }
    EXPECT_FALSE(File::Exists(widePath("loose link").c_str()));
    EXPECT_TRUE(File::Delete(widePath("loose link").c_str()));
}

TEST_F(SystemIOFile, NoNameIsNoFile) {
    std::wstring const surrogate{L'a', static_cast<wchar_t>(0xD800)};
    std::wstring const inFolder = wideOf(folder) + L"/" + surrogate;
    for (wchar_t const* const name :
         {static_cast<wchar_t const*>(nullptr), L"", inFolder.c_str()}) {
        EXPECT_FALSE(File::Exists(name));
        EXPECT_FALSE(File::ProbeCreateFile(name));
        EXPECT_FALSE(File::Delete(name));
    }
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(SystemIOFile, ProbingMakesAnEmptyFileForItsOwnerOnly) {
    ASSERT_TRUE(File::ProbeCreateFile(widePath("new").c_str()));
    EXPECT_EQ(fs::file_size(path("new")), 0U);
    EXPECT_TRUE(isForItsOwnerOnly(path("new")));
}

TEST_F(SystemIOFile, ProbingKeepsTheContentOfAFile) {
    write("file", "content");
    ASSERT_TRUE(File::ProbeCreateFile(widePath("file").c_str()));
    EXPECT_EQ(contentOf(path("file")), "content");
}

TEST_F(SystemIOFile, DeletingSparesFullFolders) {
    fs::create_directory(path("folder"));
    write("folder/file", "content");
    EXPECT_FALSE(File::Delete(widePath("folder").c_str()));
    EXPECT_EQ(contentOf(path("folder/file")), "content");
}

} // namespace
