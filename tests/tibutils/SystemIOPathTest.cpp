#include <TibXml/tibutils/SystemIOFile.h>
#include <TibXml/tibutils/SystemIOPath.h>

#include <gtest/gtest.h>

#include "TemporaryFolder.h"

#include <cstdlib>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;
using TibUtils::SystemIO::File::Delete;
using TibUtils::SystemIO::Path::GetTempFileNameW;

class GetTempFileName : public InTemporaryFolder {
protected:
    GetTempFileName() : place(wideOf(folder)) {}

    std::wstring make(wchar_t const* prefix, wchar_t const* extension) const {
        return std::wstring(GetTempFileNameW(place.c_str(), prefix, extension).view());
    }

    std::wstring const place;
};

// Sets TMPDIR for one test.
class WithTmpdir {
public:
    explicit WithTmpdir(std::string const& value) {
        char const* const old = std::getenv("TMPDIR");
        before = old != nullptr ? old : "";
        ::setenv("TMPDIR", value.c_str(), 1);
    }

    WithTmpdir(WithTmpdir const&) = delete;
    WithTmpdir& operator=(WithTmpdir const&) = delete;

    ~WithTmpdir() {
        if (before.empty()) {
            ::unsetenv("TMPDIR");
        } else {
            ::setenv("TMPDIR", before.c_str(), 1);
        }
    }

private:
    std::string before;
};

TEST_F(GetTempFileName, MakesAnEmptyFileForItsOwnerOnly) {
    fs::path const file = pathOf(make(nullptr, nullptr));
    EXPECT_EQ(file.parent_path(), folder);
    EXPECT_TRUE(fs::is_regular_file(file));
    EXPECT_EQ(fs::file_size(file), 0U);
    EXPECT_TRUE(isForItsOwnerOnly(file));
}

struct NameRow {
    wchar_t const* prefix;
    wchar_t const* extension;
    std::wstring begin;
    std::wstring end;
};

TEST_F(GetTempFileName, NamesBeginAndEndAsTold) {
    for (NameRow const& row :
         {NameRow{nullptr, nullptr, L"tib", L".tmp"},
          NameRow{L"backup-", L".xml", L"backup-", L".xml"}, NameRow{L"", L"", L"", L""},
          NameRow{L"\u00E4", nullptr, L"\u00E4", L".tmp"},
          NameRow{nullptr, L"XXXXXX", L"tib", L"XXXXXX"}}) {
        fs::path const file = pathOf(make(row.prefix, row.extension));
        std::wstring const name = wideOf(file.filename());
        EXPECT_TRUE(fs::exists(file));
        EXPECT_EQ(file.parent_path(), folder);
        EXPECT_EQ(name.size(), row.begin.size() + 6 + row.end.size());
        EXPECT_TRUE(name.starts_with(row.begin));
        EXPECT_TRUE(name.ends_with(row.end));
    }
}

TEST_F(GetTempFileName, NamesAreNeverGivenTwice) {
    constexpr std::size_t perThread = 200;
    std::vector<std::wstring> names[4];
    std::vector<std::thread> threads;
    for (auto& mine : names) {
        threads.emplace_back([this, &mine] {
            for (std::size_t i = 0; i < perThread; ++i) {
                mine.push_back(make(nullptr, nullptr));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<std::wstring> all;
    for (auto const& some : names) {
        all.insert(some.begin(), some.end());
    }
    EXPECT_EQ(all.count(L""), 0U);
    EXPECT_EQ(all.size(), 4 * perThread);
}

TEST_F(GetTempFileName, DefaultsToTheUsersDirectory) {
    WithTmpdir const here(folder.string());
    for (wchar_t const* const directory : {static_cast<wchar_t const*>(nullptr), L""}) {
        CString const name = GetTempFileNameW(directory, nullptr, nullptr);
        fs::path const file = pathOf(name);
        EXPECT_EQ(file.parent_path(), folder);
        EXPECT_TRUE(Delete(name));
        EXPECT_FALSE(fs::exists(file));
    }
}

TEST_F(GetTempFileName, PathsAreAbsolute) {
    fs::path const before = fs::current_path();
    fs::current_path(folder);
    fs::path const file = pathOf(GetTempFileNameW(L".", nullptr, nullptr));
    fs::current_path(before);
    EXPECT_TRUE(file.is_absolute());
    EXPECT_TRUE(fs::exists(file));
}

TEST_F(GetTempFileName, IsEmptyWhenNoFileCanBeMade) {
    write("file", "");
    std::wstring const noFolder = widePath("no folder");
    std::wstring const notAFolder = widePath("file");
    std::wstring const surrogate(1, static_cast<wchar_t>(0xD800));
    std::wstring const tooLong(300, L'a');
    EXPECT_EQ(GetTempFileNameW(noFolder.c_str(), nullptr, nullptr), L"");
    EXPECT_EQ(GetTempFileNameW(notAFolder.c_str(), nullptr, nullptr), L"");
    EXPECT_EQ(GetTempFileNameW(surrogate.c_str(), nullptr, nullptr), L"");
    EXPECT_EQ(make(surrogate.c_str(), nullptr), L"");
    EXPECT_EQ(make(nullptr, surrogate.c_str()), L"");
    EXPECT_EQ(make(tooLong.c_str(), nullptr), L"");
    EXPECT_EQ(make(L"../a", nullptr), L"");
    EXPECT_EQ(make(nullptr, L"/a"), L"");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
}

TEST_F(GetTempFileName, IsEmptyWhenTheUsersDirectoryIsNone) {
    for (char const* const directory : {"no folder", "\xFF"}) {
        WithTmpdir const here(path(directory).string());
        EXPECT_EQ(GetTempFileNameW(nullptr, nullptr, nullptr), L"") << directory;
    }
}

TEST_F(GetTempFileName, IsEmptyWhenTheDirectorysNameIsNotUnicode) {
    fs::create_directory(path("\xFF"));
    WithTmpdir const here(path("\xFF").string());
    EXPECT_EQ(GetTempFileNameW(nullptr, nullptr, nullptr), L"");
    EXPECT_TRUE(fs::is_empty(path("\xFF")));
}

} // namespace
